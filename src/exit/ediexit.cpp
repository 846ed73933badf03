// ediexit: the exported exit functions.
//
// Each takes the host's call record. Failures go one of two ways: a refused call sets returnCode to -1 and leaves the
// output fields as they are; where memory runs out, the exports that have a frame for it answer with szFailure, and
// leave returnCode as it is.

// The objects are compiled with hidden visibility: what this header declares is what the library shows.
#pragma GCC visibility push(default)
#include "ediexit.h"
#pragma GCC visibility pop

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <memory>
#include <utility>

#include "grammar/grammarbuilder.h"
#include "rules/contents.h"
#include "rules/rulereader.h"
#include "rules/rules.h"
#include "rules/seglists.h"
#include "walk/datasegment.h"
#include "walk/datastream.h"
#include "walk/errorinfos.h"
#include "xml/parsexml.h"

extern "C" {
const char cQrntVersion[] = "4.4.1.7";
const char cQrntOperatingSystem[] = "LINUX";
const char szVersion[] = "9.0.0(96)";
const char szFullKLVVersion[] = "9.0.0.4(96)";
const char szVoptVersionLabel[] = "VoptVerLabel=9.0.0.4(96)";
const char szProductName[] = "ediexit: exit functions that validate EDI messages";
const char szNotice[] = "Checks a message against the grammar and the rules that its host hands over; keeps neither.";
}

namespace {

constexpr int refused = -1;
constexpr std::size_t handleTextSize = 64;

/// Where the digits of a handle begin: behind their number, two hexadecimal digits, and a '0'.
constexpr std::size_t handleDigitsAt = 3;

/// The object that a handle text names; null for a text that names none. Writes a NUL at index 2 of the text and leaves
/// it there. Stores the position behind the handle in `rest`, unless that is null.
EDI_Structure* str2ptr(char* text, char** rest) {
    constexpr std::size_t digitsAtMost = 16;
    constexpr std::size_t half = digitsAtMost / 2;
    text[2] = '\0';
    std::size_t const digitCount = std::strtoul(text, nullptr, 16);
    if (digitCount > digitsAtMost) return nullptr;
    char* const end = text + handleDigitsAt + digitCount;
    if (rest) *rest = end;

    char digits[digitsAtMost + 1] = "0000000000000000";
    std::memcpy(digits + digitsAtMost - digitCount, text + handleDigitsAt, digitCount);
    auto const right = std::strtoul(digits + half, nullptr, 16);
    digits[half] = '\0';
    auto const left = std::strtoul(digits, nullptr, 16);
    return reinterpret_cast<EDI_Structure*>(right + (left << 32));
}

/// The object of a call and the input behind its handle.
struct ObjectCall {
    EDI_Structure* object = nullptr;
    char* input = nullptr;
    std::size_t inputLength = 0;

    explicit ObjectCall(tagExitParamStruct const& param) {
        if (!param.inputText) return;
        object = str2ptr(param.inputText, &input);
        if (!object) return;
        auto const handleLength = static_cast<std::size_t>(input - param.inputText);
        inputLength = param.inputLength > handleLength ? param.inputLength - handleLength : 0;
    }

    /// How many of the first `most` bytes of the input are there: those that its length counts, and those in front of
    /// the NUL that ends it, where a host counts fewer.
    std::size_t readable(std::size_t most) const { return std::max(std::min(inputLength, most), strnlen(input, most)); }
};

/// Runs the body of an export that answers with szFailure where memory runs out. The buffer for that answer is taken on
/// entry. Where even that can't be had, a failing call is refused instead.
template <typename Body>
void runFramed(tagExitParamStruct* param, Body body) {
    struct FreeReply {
        void operator()(char* reply) const { voptMemFree(reply); }
    };
    std::unique_ptr<char, FreeReply> failureBuffer(static_cast<char*>(voptMemAlloc(sizeof szFailure)));
    try {
        body();
    } catch (char const* text) {
        if (failureBuffer) {
            std::memcpy(failureBuffer.get(), text, sizeof szFailure);
            param->outputLength = sizeof szFailure - 1;
            param->outputText = failureBuffer.release();
        } else {
            param->returnCode = refused;
        }
    }
}

/// Takes a reply buffer. Throws szFailure where there is no memory.
char* allocReply(std::size_t size) {
    auto* reply = static_cast<char*>(voptMemAlloc(size));
    if (!reply) throwFailure();
    return reply;
}

void answer(tagExitParamStruct* param, char* reply, std::size_t length) {
    param->outputText = reply;
    param->outputLength = length;
    param->returnCode = 0;
}

/// Answers with the lines of a list of findings or values.
template <class List>
void answerWithReport(tagExitParamStruct* param, List const& list) {
    std::size_t const length = list.reportLength();
    char* reply = allocReply(length + 1);
    list.printReport(reply);
    answer(param, reply, length);
}

/// Answers with the findings of the object.
void MakeErrorString(tagExitParamStruct* param, EDI_Structure* object) {
    answerWithReport(param, *object->errorInfos);
}

/// Puts a new list in the place of an owned one.
template <class List>
void replace(List*& list, std::unique_ptr<List> newList) {
    delete list;
    list = newList.release();
}

/// Releases the rules of a run at its end, on whichever route.
class RulesEnd {
public:
    explicit RulesEnd(EDI_Structure& running) : object(running) {}
    RulesEnd(RulesEnd const&) = delete;
    RulesEnd& operator=(RulesEnd const&) = delete;
    ~RulesEnd() {
        delete object.rules;
        object.rules = nullptr;
    }

private:
    EDI_Structure& object;
};

void printHandle(char* text, EDI_Structure const* object) {
    std::sprintf(text + handleDigitsAt, "%lx", reinterpret_cast<unsigned long>(object));
    std::sprintf(text, "%2.2x", static_cast<unsigned>(std::strlen(text + handleDigitsAt)));
    text[handleDigitsAt - 1] = '0';
}

std::unique_ptr<EDI_Structure> makeRoot(int grammarKind) {
    auto errorInfos = std::make_unique<ErrorInfos>();
    auto segLists = grammarKind == 2 ? std::make_unique<SegLists>() : nullptr;
    auto root = std::make_unique<EDI_Structure>(grammarKind, errorInfos.get(), segLists.get());
    errorInfos.release();
    segLists.release();
    if (grammarKind == 2) root->identifierBuffer = new IdentifierBuffer;
    return root;
}

/// Makes the record list of a message. The divisors are the mean length of a record in the two forms of the stream, so
/// that one allocation does for the list, and one for the pool, in the usual case.
void openDataSegment(EDI_Structure& object, std::size_t streamLength) {
    float const meanLength = object.grammarKind == 2 ? 38.5F : 13.5F;
    int const estimate = static_cast<int>(static_cast<float>(streamLength) / meanLength);
    if (object.grammarKind == 2) object.identifierBuffer->reserve(static_cast<int>(estimate / 4 * 8.0));
    auto data = std::make_unique<DataSegment>();
    data->segments.setSize(estimate, std::max(static_cast<int>(estimate * 0.1), 10));
    if (object.dataSegment) data->walk = object.dataSegment->walk + 1;
    delete object.dataSegment;
    object.dataSegment = data.release();
}

/// Copies the stream into the object, with padding behind it. An earlier copy stays: located lines point into it.
void copyStream(EDI_Structure& object, char const* stream, std::size_t length) {
    if (object.dataCopy) {
        object.supersededCopies = new SupersededCopy{object.dataCopy, object.supersededCopies};
        object.dataCopy = nullptr;
    }
    auto* copy = static_cast<char*>(mallocOrThrow(length + streamPadding));
    std::memcpy(copy, stream, length);
    std::memset(copy + length, 0, streamPadding);
    object.dataCopy = copy;
}

/// Whether the tree can be walked: not once DestroyGrammar has released it, nor behind a RunRules, whose new list of
/// findings the nodes don't know.
bool canBeWalked(EDI_Structure const& object) {
    return object.errorInfos && !object.contents;
}

}  // namespace

void* voptMemAlloc(uint64_t size) {
    return std::malloc(size);
}

void voptMemFree(void* pointer) {
    std::free(pointer);
}

void CreateStruct(tagExitParamStruct* param) {
    runFramed(param, [param] {
        static char noText[] = "";
        char* text = param->inputText ? param->inputText : noText;
        auto root = makeRoot(grammarKindOf(text));
        if (!buildGrammar(*root, text, param->inputText ? param->inputLength : 0)) {
            param->returnCode = refused;
            return;
        }
        char* handle = allocReply(handleTextSize);
        printHandle(handle, root.release());
        answer(param, handle, std::strlen(handle));
    });
}

void SetDelimiters(tagExitParamStruct* param) {
    constexpr std::size_t terminatorAt = 2;
    constexpr std::size_t searchedBytes = 6;
    constexpr char terminatorEnd = 'X';
    ObjectCall const call(*param);
    if (!call.object || !call.object->segLists) {
        param->returnCode = refused;
        return;
    }
    SegLists& lines = *call.object->segLists;
    std::size_t const given = call.readable(terminatorAt + searchedBytes);
    lines.elementDelimiter = given > 0 ? call.input[0] : '\0';
    lines.subElementDelimiter = given > 1 ? call.input[1] : '\0';

    char* const terminator = call.input + std::min(given, terminatorAt);
    std::size_t const searched = std::max(given, terminatorAt) - terminatorAt;
    auto* marker = static_cast<char*>(std::memchr(terminator, terminatorEnd, searched));
    if (marker) *marker = '\0';
    std::size_t const length = marker ? static_cast<std::size_t>(marker - terminator) : strnlen(terminator, searched);
    lines.terminatorLength = static_cast<int>(std::min(length, std::size_t{SegLists::longestTerminator}));
    std::memset(lines.terminatorText, 0, sizeof lines.terminatorText);
    std::memcpy(lines.terminatorText, terminator, static_cast<std::size_t>(lines.terminatorLength));
    param->returnCode = 0;
}

void ValidateStruct(tagExitParamStruct* param) {
    runFramed(param, [param] {
        ObjectCall const call(*param);
        if (!call.object || !canBeWalked(*call.object)) {
            param->returnCode = refused;
            return;
        }
        EDI_Structure& object = *call.object;
        bool const isLocating = object.grammarKind == 2;
        if (isLocating) copyStream(object, call.input, call.inputLength);
        openDataSegment(object, call.inputLength);
        Terminator const terminator =
            isLocating ? Terminator{object.segLists->terminatorText, object.segLists->terminatorLength}
                       : Terminator{"$", 1};
        readDataStream(isLocating ? object.dataCopy : call.input, call.inputLength, terminator, *object.dataSegment,
                       object.identifierBuffer);
        object.validateStructure(object.dataSegment, nullptr, nullptr, nullptr, object.grammarKind,
                                 object.identifierBuffer);
        if (object.errorInfos->count == 0)
            answer(param, nullptr, 0);
        else
            MakeErrorString(param, &object);
    });
}

void GetLoopText(tagExitParamStruct* param) {
    runFramed(param, [param] {
        ObjectCall const call(*param);
        if (!call.object || !call.object->segLists) {
            param->returnCode = refused;
            return;
        }
        SegLists const& lines = *call.object->segLists;
        std::size_t const size = lines.loopTextSize();
        char* reply = allocReply(size);
        std::memset(reply, 0, size);
        lines.printLoopText(reply);
        answer(param, reply, std::strlen(reply));
    });
}

void RunRules(tagExitParamStruct* param) {
    runFramed(param, [param] {
        ObjectCall const call(*param);
        if (!call.object) {
            param->returnCode = refused;
            return;
        }
        EDI_Structure& object = *call.object;
        // All three or none: findings that the tree doesn't know always have contents beside them.
        auto errorInfos = std::make_unique<ErrorInfos>();
        auto contents = std::make_unique<Contents>();
        auto rules = std::make_unique<Rules>();
        replace(object.errorInfos, std::move(errorInfos));
        replace(object.contents, std::move(contents));
        replace(object.rules, std::move(rules));
        RulesEnd const rulesEnd(object);
        readRules(call.input, call.inputLength, {object.segLists, object.errorInfos, object.contents}, *object.rules);
        for (int index = 0; index < object.rules->count; ++index)
            object.rules->data[index]->ValidateRule();
        if (object.errorInfos->count != 0)
            MakeErrorString(param, &object);
        else if (object.contents->count != 0)
            answerWithReport(param, *object.contents);
        else
            answer(param, nullptr, 0);
    });
}

void ValidateXML(tagExitParamStruct* param) {
    constexpr std::size_t optionWidth = 3;
    constexpr long withoutErrors = 101;
    ObjectCall const call(*param);
    if (!call.object) {
        param->returnCode = refused;
        return;
    }
    char*& message = call.object->xmlMessage;
    bool const reportErrors = std::strtol(call.input, nullptr, 10) != withoutErrors;
    char* xml = call.input + call.readable(optionWidth);
    std::free(message);
    message = nullptr;
    try {
        unsigned long bufferSize = 0;
        ParseXML(xml, &message, 1, reportErrors, 1, &bufferSize);
        // The text, its terminator and the NUL behind it: a document without findings gives two NULs.
        std::size_t const length = std::strlen(message) + 2;
        char* reply = allocReply(length);
        std::memcpy(reply, message, length);
        answer(param, reply, length);
    } catch (char const*) {
        param->returnCode = refused;
    }
}

void GetErrorText(tagExitParamStruct* param) {
    runFramed(param, [param] {
        unsigned long const index = param->inputText ? std::strtoul(param->inputText, nullptr, 10) : std::size(errtab);
        if (index >= std::size(errtab)) {
            param->returnCode = refused;
            return;
        }
        std::size_t const length = std::strlen(errtab[index]);
        char* reply = allocReply(length + 1);
        std::memcpy(reply, errtab[index], length + 1);
        answer(param, reply, length);
    });
}

void GetQRNTVersion(tagExitParamStruct* param) {
    constexpr std::size_t size = sizeof cQrntVersion + sizeof cQrntOperatingSystem + sizeof szVersion;
    auto* reply = static_cast<char*>(voptMemAlloc(size));
    if (!reply) {
        param->returnCode = refused;
        return;
    }
    int const length = std::snprintf(reply, size, "%s|%s|%s", cQrntVersion, cQrntOperatingSystem, szVersion);
    answer(param, reply, static_cast<std::size_t>(length));
}

void DestroyGrammar(tagExitParamStruct* param) {
    ObjectCall const call(*param);
    if (!call.object) {
        param->returnCode = refused;
        return;
    }
    EDI_Structure& object = *call.object;
    object.deleteChildren();
    delete object.dataSegment;
    object.dataSegment = nullptr;
    delete object.contents;
    object.contents = nullptr;
    delete object.errorInfos;
    object.errorInfos = nullptr;
    param->returnCode = 0;
}

void DestroyStruct(tagExitParamStruct* param) {
    delete ObjectCall(*param).object;
    param->returnCode = 0;
}
