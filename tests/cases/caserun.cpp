#include "caserun.h"

#include <algorithm>
#include <optional>
#include <sstream>
#include <stdexcept>

#include "hostinput.h"
#include "reportlines.h"

namespace cases {
namespace {

const char* const usualDelimiters = "*:~X";

struct Object {
    std::string handle;
    bool isKind1;
    std::optional<Delimiters> delimiters;
};

/* The sections that stand behind a call and say what is expected of it. */
struct Expectations {
    const Section* returnCode = nullptr;
    const Section* output = nullptr;
};

bool isReturnSection(const Section& section) {
    return section.name == "return";
}

bool isOutputSection(const Section& section) {
    static const std::vector<std::string> names = {"report", "contents", "reply", "no reply", "untouched"};
    return std::find(names.begin(), names.end(), section.name) != names.end();
}

/* Two lower-case hexadecimal digits with the number of the address's digits, '0', and the address. */
bool isHandleText(const std::string& text) {
    constexpr size_t headWidth = 3;
    const auto isHexadecimal = [](const std::string& digits) {
        return !digits.empty() && digits.find_first_not_of("0123456789abcdef") == std::string::npos;
    };
    if (text.size() <= headWidth || !isHexadecimal(text)) return false;
    const std::string address = text.substr(headWidth);
    return std::stoul(text.substr(0, 2), nullptr, 16) == address.size() && text[2] == '0' && address[0] != '0';
}

std::vector<std::string> columnsOf(const Line& line) {
    std::vector<std::string> texts;
    std::string text;
    for (std::istringstream columns(line.text + "|"); std::getline(columns, text, '|');) {
        texts.push_back(unescape({line.number, trim(text)}));
    }
    return texts;
}

/* A structural finding is written by its four columns that vary; every other record by all of its columns. */
std::vector<std::string> findingColumns(const Line& line) {
    constexpr size_t structuralColumns = 4;
    const std::vector<std::string> texts = columnsOf(line);
    if (texts.size() == findingLayout().size()) return texts;
    if (texts.size() != structuralColumns) {
        throw CaseError(line.number,
                        "a finding has 4 columns, or all 10; this one has " + std::to_string(texts.size()));
    }
    return {texts[0], "0", "00", texts[1], texts[2], texts[3], "NONE", "SEG", "ERROR", "Element Text"};
}

std::vector<std::string> expectedLines(const Section& section, const Layout& layout) {
    std::vector<std::string> lines;
    for (const Line& line : section.lines) {
        if (line.text.empty()) continue;
        try {
            lines.push_back(formatLine(layout, section.name == "contents" ? columnsOf(line) : findingColumns(line)));
        } catch (const std::invalid_argument& fault) {
            throw CaseError(line.number, fault.what());
        }
    }
    return lines;
}

std::string describe(const Answer& answer) {
    if (answer.output == Answer::Output::untouched) return "the output fields as the host left them";
    if (answer.output == Answer::Output::none) return "no reply";
    return "a reply of " + std::to_string(answer.reply.size()) + " bytes: \"" + escape(answer.reply) + "\"";
}

int numberOf(const Section& section) {
    const std::string text = joined(section, "");
    try {
        size_t end = 0;
        const int number = std::stoi(text, &end);
        if (end == text.size()) return number;
    } catch (const std::logic_error&) {
    }
    throw CaseError(section.line, "[" + section.name + "] takes a number, not '" + text + "'");
}

class CaseRun {
public:
    CaseRun(const CaseFile& theCase, const Host& theHost) : caseFile(theCase), host(theHost) {}

    std::vector<Failure> run() {
        guarded(0, [this] { requireExpectation(); });
        for (size_t next = 0; next < caseFile.sections.size() && failures.empty();) {
            const Section& section = caseFile.sections[next++];
            guarded(section.line, [&] { take(section, expectationsBehind(next)); });
        }
        for (Object& object : objects) {
            if (!object.handle.empty()) guarded(0, [&] { destroy(object); });
        }
        return failures;
    }

private:
    const CaseFile& caseFile;
    const Host& host;
    std::vector<Failure> failures;
    std::vector<Object> objects;
    std::optional<size_t> current;           // the object that calls are made on
    std::optional<std::string> givenHandle;  // a handle text of the case's own, in place of that of an object

    void fail(int line, const std::string& text) { failures.push_back({line, text}); }

    template <typename Step>
    void guarded(int line, Step step) {
        try {
            step();
        } catch (const CaseError& fault) {
            fail(fault.line, std::string("the case file is malformed: ") + fault.what());
        } catch (const std::runtime_error& fault) {
            fail(line, fault.what());
        }
    }

    void requireExpectation() const {
        const bool hasExpectation =
            std::any_of(caseFile.sections.begin(), caseFile.sections.end(), [](const Section& section) {
                return isReturnSection(section) || isOutputSection(section) || section.name == "loops";
            });
        if (!hasExpectation) throw CaseError(0, "the case expects nothing");
    }

    Expectations expectationsBehind(size_t& next) const {
        Expectations expectations;
        for (; next < caseFile.sections.size(); ++next) {
            const Section& section = caseFile.sections[next];
            if (!isReturnSection(section) && !isOutputSection(section)) break;
            const Section*& place = isReturnSection(section) ? expectations.returnCode : expectations.output;
            if (place) throw CaseError(section.line, "[" + place->name + "] has already told what is expected here");
            place = &section;
        }
        return expectations;
    }

    void take(const Section& section, const Expectations& expectations) {
        const std::string& name = section.name;
        if (name == "object") return onlyWithoutExpectations(expectations, [&] { selectObject(section); });
        if (name == "handle") return onlyWithoutExpectations(expectations, [&] { givenHandle = joined(section, ""); });
        if (name == "loops") return onlyWithoutExpectations(expectations, [&] { checkLoops(section); });
        if (name == "grammar") return createObject(section, expectations);
        if (name == "delimiters") return setDelimiters(section, expectations);
        if (name == "message")
            return answerTo(section, "ValidateStruct", handle(section) + stream(section), expectations);
        if (name == "stream")
            return answerTo(section, "ValidateStruct", handle(section) + joined(section, ""), expectations);
        if (name == "rules") return answerTo(section, "RunRules", handle(section) + joined(section, ""), expectations);
        if (name == "rule") return answerTo(section, "RunRules", handle(section) + ruleRecords(section), expectations);
        if (name == "xml")
            return answerTo(section, "ValidateXML", handle(section) + joined(section, "\n"), expectations);
        if (name == "error text") return answerTo(section, "GetErrorText", joined(section, ""), expectations);
        if (name == "version") return answerTo(section, "GetQRNTVersion", joined(section, ""), expectations);
        if (name == "destroy grammar") return answerTo(section, "DestroyGrammar", handle(section), expectations);
        if (name == "destroy") return destroyCurrent(section, expectations);
        if (isReturnSection(section) || isOutputSection(section)) {
            throw CaseError(section.line, "[" + name + "] stands in front of any call");
        }
        throw CaseError(section.line, "there is no section [" + name + "]");
    }

    template <typename Step>
    void onlyWithoutExpectations(const Expectations& expectations, Step step) const {
        const Section* first = expectations.output ? expectations.output : expectations.returnCode;
        if (first) throw CaseError(first->line, "[" + first->name + "] has no call in front of it");
        step();
    }

    Object& object(const Section& section) {
        if (givenHandle || !current)
            throw CaseError(section.line, "[" + section.name + "] has no object to be called on");
        return objects[*current];
    }

    std::string handle(const Section& section) { return givenHandle ? *givenHandle : object(section).handle; }

    void selectObject(const Section& section) {
        const int number = numberOf(section);
        const size_t index = static_cast<size_t>(number) - 1;
        if (number < 1 || index >= objects.size() || objects[index].handle.empty()) {
            throw CaseError(section.line, "there is no such object");
        }
        current = index;
        givenHandle.reset();
    }

    void createObject(const Section& section, const Expectations& expectations) {
        const std::string grammar = joined(section, "\n");
        const Answer answer = host.call("CreateStruct", grammar);
        givenHandle.reset();
        current.reset();
        if (answer.returnCode == 0 && isHandleText(answer.reply)) {
            current = objects.size();
            objects.push_back({answer.reply, !grammar.empty() && grammar[0] == '1', std::nullopt});
        }
        check(section, answer, expectations);
    }

    void setDelimiters(const Section& section, const Expectations& expectations) {
        const std::string text = joined(section, "");
        if (!givenHandle) object(section).delimiters = readDelimiters(text);
        answerTo(section, "SetDelimiters", handle(section) + text, expectations);
    }

    /* A message of kind 2 whose case names no delimiters has the usual ones. */
    std::string stream(const Section& section) {
        Object& receiver = object(section);
        if (receiver.isKind1) return streamOfKind1(section);
        if (!receiver.delimiters) {
            receiver.delimiters = readDelimiters(usualDelimiters);
            answerTo({"delimiters", section.line, {}}, "SetDelimiters", receiver.handle + usualDelimiters, {});
        }
        if (receiver.delimiters->terminator.empty()) {
            throw CaseError(section.line, "without a terminator no segment of [message] ends; see [stream]");
        }
        return streamOfKind2(section, *receiver.delimiters);
    }

    void destroyCurrent(const Section& section, const Expectations& expectations) {
        const std::string handleText = handle(section);
        if (!givenHandle) {
            object(section).handle.clear();
            current.reset();
        }
        answerTo(section, "DestroyStruct", handleText, expectations);
    }

    void destroy(Object& remaining) {
        answerTo({"end of the case", 0, {}}, "DestroyStruct", remaining.handle, {});
        remaining.handle.clear();
    }

    void checkLoops(const Section& section) {
        const std::string terminator = object(section).delimiters ? object(section).delimiters->terminator : "";
        std::string expected;
        for (const Line& line : section.lines)
            expected += unescape(line) + terminator;
        const Answer answer = host.call("GetLoopText", handle(section));
        checkCall(section, answer, 0);
        if (answer.output != Answer::Output::reply || answer.reply != expected) {
            fail(section.line, "the located segments differ\n  expected \"" + escape(expected) + "\"\n  found    " +
                                   describe(answer));
        }
    }

    void answerTo(const Section& section, const std::string& exportName, const std::string& input,
                  const Expectations& expectations) {
        check(section, host.call(exportName, input), expectations);
    }

    void check(const Section& section, const Answer& answer, const Expectations& expectations) {
        const int32_t expectedReturn = expectedReturnCode(expectations);
        checkCall(section, answer, expectedReturn);
        if (expectations.output) return checkOutput(*expectations.output, answer);
        if (expectedReturn == -1) return requireOutput(section, answer, Answer::Output::untouched);
        checkUsualOutput(section, answer);
    }

    int32_t expectedReturnCode(const Expectations& expectations) const {
        if (!expectations.returnCode) return 0;
        if (joined(*expectations.returnCode, "") == "untouched") return Host::presetReturnCode;
        return numberOf(*expectations.returnCode);
    }

    void checkCall(const Section& section, const Answer& answer, int32_t expectedReturn) {
        if (!answer.breach.empty()) fail(section.line, answer.breach);
        if (answer.returnCode == expectedReturn) return;
        const auto name = [](int32_t code) {
            return code == Host::presetReturnCode ? std::string("untouched") : std::to_string(code);
        };
        fail(section.line, "the return code: expected " + name(expectedReturn) + ", found " + name(answer.returnCode));
    }

    /* What is expected where the case says nothing. */
    void checkUsualOutput(const Section& section, const Answer& answer) {
        const std::string& name = section.name;
        if (name == "error text" || name == "version" || name == "xml") {
            throw CaseError(section.line, "[" + name + "] needs its [reply]");
        }
        if (name == "grammar") {
            if (!isHandleText(answer.reply)) fail(section.line, "expected a handle, found " + describe(answer));
        } else if (name == "message" || name == "stream" || name == "rules" || name == "rule") {
            requireOutput(section, answer, Answer::Output::none);
        } else {
            requireOutput(section, answer, Answer::Output::untouched);
        }
    }

    void requireOutput(const Section& section, const Answer& answer, Answer::Output output) {
        if (answer.output == output) return;
        fail(section.line, std::string("expected ") +
                               (output == Answer::Output::none ? "no reply" : "the output fields untouched") +
                               ", found " + describe(answer));
    }

    void checkOutput(const Section& section, const Answer& answer) {
        if (section.name == "untouched") return requireOutput(section, answer, Answer::Output::untouched);
        if (section.name == "no reply") return requireOutput(section, answer, Answer::Output::none);
        if (section.name == "reply") return checkReply(section, answer);
        const Layout& layout = section.name == "contents" ? contentLayout() : findingLayout();
        const std::vector<std::string> lines = expectedLines(section, layout);
        const auto output = lines.empty() ? Answer::Output::none : Answer::Output::reply;
        const std::string difference = explainDifference(layout, lines, answer.reply);
        if (!difference.empty()) {
            fail(section.line, difference);
        } else if (answer.output != output) {
            fail(section.line, "expected no reply, found " + describe(answer));
        }
    }

    void checkReply(const Section& section, const Answer& answer) {
        const std::string expected = joined(section, "");
        if (answer.output == Answer::Output::reply && answer.reply == expected) return;
        fail(section.line, "expected a reply of " + std::to_string(expected.size()) + " bytes: \"" + escape(expected) +
                               "\"\n  found " + describe(answer));
    }
};

}  // namespace

std::vector<Failure> runCase(const CaseFile& caseFile, const Host& host) {
    return CaseRun(caseFile, host).run();
}

}  // namespace cases
