/*
 * ediexit.h: what a host needs to call libediexit.so, from C or C++.
 *
 * Every exit function takes one call record and returns nothing: what it has to say stands in the record afterwards.
 * Replies are bytes of `outputLength`, not NUL-terminated texts. They belong to the host, which gives each one back
 * with voptMemFree. docs/interface.md tells the order of the calls, what each one reads and what it answers.
 *
 * Threads: one object (one handle) is for one thread at a time; separate objects are independent.
 */
#ifndef EDIEXIT_H
#define EDIEXIT_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/*
 * The host's call record, on a 64-bit platform. The library reads and writes the named fields and nothing else.
 *
 *   offset  width  field
 *        8      8  inputLength    in   bytes of inputText, the handle text at its head included
 *       16      8  outputLength   out  bytes of the reply
 *       48      8  inputText      in   the input: writable memory of the host's, with a NUL behind its last byte
 *       56      8  outputText     out  the reply, null where there is none; the host gives it back with voptMemFree
 *       80      4  returnCode     out  0, or -1 where the call was refused
 */
typedef struct tagExitParamStruct {
    unsigned char hostOnly0[8];
    uint64_t inputLength;
    uint64_t outputLength;
    unsigned char hostOnly24[24];
    char* inputText;
    char* outputText;
    unsigned char hostOnly64[16];
    int32_t returnCode;
} tagExitParamStruct;

#ifdef __cplusplus
#define EDIEXIT_ASSERT_OFFSET(field, offset) \
    static_assert(offsetof(tagExitParamStruct, field) == (offset), #field " stands where hosts expect it")
#else
#define EDIEXIT_ASSERT_OFFSET(field, offset) \
    _Static_assert(offsetof(tagExitParamStruct, field) == (offset), #field " stands where hosts expect it")
#endif
EDIEXIT_ASSERT_OFFSET(inputLength, 8);
EDIEXIT_ASSERT_OFFSET(outputLength, 16);
EDIEXIT_ASSERT_OFFSET(inputText, 48);
EDIEXIT_ASSERT_OFFSET(outputText, 56);
EDIEXIT_ASSERT_OFFSET(returnCode, 80);
#undef EDIEXIT_ASSERT_OFFSET

/* Builds the validator of a grammar. Input: the grammar text alone. Reply: the handle text of the object, which stands
 * at the head of the input of every later call. returnCode -1, with the output fields untouched: a record of the
 * grammar lacks one of its first four fields. */
void CreateStruct(tagExitParamStruct* param);

/* Sets the delimiters of the message. Input: handle, element delimiter, sub-element delimiter, segment terminator of up
 * to three characters, 'X'. No reply. For grammars of kind 2, before ValidateStruct. */
void SetDelimiters(tagExitParamStruct* param);

/* Walks a message through the grammar. Input: handle, data stream. Reply: a line of 173 bytes for each finding, or
 * none. Once per object. */
void ValidateStruct(tagExitParamStruct* param);

/* Gives the located segments with their loops, as text. Input: handle. Reply: a run of lines (docs/interface.md). For
 * grammars of kind 2, after ValidateStruct, and before RunRules if the host wants whole lines. */
void GetLoopText(tagExitParamStruct* param);

/* Runs situational rules over the located segments. Input: handle, rule records. Reply: the findings, 173 bytes a line;
 * if there are none, the values taken out of the message, 223 bytes a line; or none. For grammars of kind 2, after
 * ValidateStruct, as often as wanted. */
void RunRules(tagExitParamStruct* param);

/* Validates an XML document against its schema. Input: handle, a decimal number of three characters, the document,
 * which ends at its first NUL. With the number 101 the messages of the level "Error" are left out. Reply: the parser's
 * messages, with two NULs behind them that outputLength counts. At any time, as often as wanted. */
void ValidateXML(tagExitParamStruct* param);

/* Gives the text of a structural error. Input: a decimal number from 0 to 9, no handle. Reply: the text. */
void GetErrorText(tagExitParamStruct* param);

/* Tells the version. No input. Reply: three texts separated by '|'. */
void GetQRNTVersion(tagExitParamStruct* param);

/* Releases the tree of the grammar ahead of the object. Input: handle. No reply. No ValidateStruct may follow. */
void DestroyGrammar(tagExitParamStruct* param);

/* Releases the object. Input: handle, which is of no use afterwards. No reply. */
void DestroyStruct(tagExitParamStruct* param);

/* Memory that crosses the boundary: malloc and free of the library's own runtime. voptMemAlloc answers null where there
 * is no memory. */
void* voptMemAlloc(uint64_t size);
void voptMemFree(void* pointer);

/* Texts that a host may read, NUL-terminated. */
extern const char szVersion[];
extern const char szFullKLVVersion[];
extern const char szVoptVersionLabel[];
extern const char cQrntVersion[];
extern const char cQrntOperatingSystem[];
extern const char szProductName[];
extern const char szNotice[];

#ifdef __cplusplus
}
#endif

#endif
