/*
 * consumer.c: a host in C11, built against an installed ediexit. Exits with 0 when the library gives the right answers
 * to a clean and to a faulty message, and says otherwise what came.
 */
#include "exits.h"

#include <stdio.h>
#include <string.h>

static char input[256];

static tagExitParamStruct callOn(const char* handle, const char* text) {
    tagExitParamStruct call = {.returnCode = -7};
    call.inputLength = (uint64_t)snprintf(input, sizeof input, "%s%s", handle, text);
    call.inputText = input;
    return call;
}

static int answers(const char* message, const char* expected) {
    char handle[64] = "";
    tagExitParamStruct create = callOn("", GRAMMAR);
    CreateStruct(&create);
    if (create.returnCode != 0 || create.outputLength >= sizeof handle) return 0;
    memcpy(handle, create.outputText, create.outputLength);
    voptMemFree(create.outputText);

    tagExitParamStruct validate = callOn(handle, message);
    ValidateStruct(&validate);
    const size_t length = strlen(expected);
    const int right = validate.returnCode == 0 && validate.outputLength == length &&
                      (length == 0 ? validate.outputText == NULL : memcmp(validate.outputText, expected, length) == 0);
    if (!right) {
        fprintf(stderr, "%s\n  expected [%s]\n  came     [%.*s]\n", message, expected, (int)validate.outputLength,
                validate.outputText ? validate.outputText : "");
    }
    voptMemFree(validate.outputText);

    tagExitParamStruct destroy = callOn(handle, "");
    DestroyStruct(&destroy);
    return right && destroy.returnCode == 0;
}

int main(void) {
    if (!OPEN_EXITS()) {
        fputs("libediexit.so.1 or one of its exports cannot be found\n", stderr);
        return 2;
    }
    const int clean = answers(CLEAN_MESSAGE, "");
    const int faulty = answers(FAULTY_MESSAGE, FAULTY_REPLY);
    return clean && faulty ? 0 : 1;
}
