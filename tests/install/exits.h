/*
 * exits.h: how the consumers of this folder reach the library's exports: linked, as ediexit.h declares them, or, with
 * BY_DLOPEN, by name from the library that the loader finds as libediexit.so.1.
 */
#ifndef EXITS_H
#define EXITS_H

#include <ediexit.h>

#ifndef BY_DLOPEN

#define OPEN_EXITS() 1

#else

#include <dlfcn.h>
#include <string.h>

static void (*createStruct)(tagExitParamStruct*);
static void (*validateStruct)(tagExitParamStruct*);
static void (*destroyStruct)(tagExitParamStruct*);
static void (*memFree)(void*);

/* Puts the address of an export into a function pointer. By copy, since C forbids the cast. */
static int findExit(void* library, const char* name, void* pointer) {
    void* const address = dlsym(library, name);
    memcpy(pointer, &address, sizeof address);
    return address != NULL;
}

static int openExits(void) {
    void* const library = dlopen("libediexit.so.1", RTLD_NOW | RTLD_LOCAL);
    return library && findExit(library, "CreateStruct", &createStruct) &&
           findExit(library, "ValidateStruct", &validateStruct) && findExit(library, "DestroyStruct", &destroyStruct) &&
           findExit(library, "voptMemFree", &memFree);
}

#define OPEN_EXITS() openExits()
#define CreateStruct createStruct
#define ValidateStruct validateStruct
#define DestroyStruct destroyStruct
#define voptMemFree memFree

#endif

/* A grammar of kind 1 with a mandatory BEG between ST and PO1, a message that keeps to it, one that lacks its BEG, and
 * what the library answers to the latter: record 2 (the PO1) stands where the BEG is missing, code 3. The reply line
 * has columns of 10, 3, 2, 8, 5, 6, 4 and 4 bytes, then of 80 and 50, and its end. */
#define GRAMMAR "1M|1|1|ST$M|1|1|BEG$O|1|0|PO1$M|1|1|SE$"
#define CLEAN_MESSAGE "ST $BEG$PO1$PO1$SE $"
#define FAULTY_MESSAGE "ST $PO1$SE $"
#define FAULTY_REPLY                                                                   \
    "000000000200000BEG     3    LOOP  NONESEG "                                       \
    "ERROR                                                                           " \
    "Element Text                                      $"

#endif
