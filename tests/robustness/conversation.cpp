#include "conversation.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <new>
#include <stdexcept>
#include <utility>
#include <xercesc/util/OutOfMemoryException.hpp>

#include "casefile.h"
#include "caserun.h"

namespace robustness {
namespace {

using Exit = void (*)(tagExitParamStruct*);

struct Export {
    const char* name;
    Exit exit;
    bool hasFailureReply;
};

constexpr Export exports[] = {
    {"CreateStruct", CreateStruct, true},
    {"SetDelimiters", SetDelimiters, false},
    {"ValidateStruct", ValidateStruct, true},
    {"GetLoopText", GetLoopText, true},
    {"RunRules", RunRules, true},
    {"ValidateXML", ValidateXML, false},
    {"GetErrorText", GetErrorText, true},
    {"GetQRNTVersion", GetQRNTVersion, false},
    {"DestroyGrammar", DestroyGrammar, false},
    {"DestroyStruct", DestroyStruct, false},
};
constexpr std::size_t exportNumber = std::size(exports);
using Exits = std::array<Exit, exportNumber>;

std::size_t indexOf(const std::string& exportName) {
    const auto* found = std::find_if(std::begin(exports), std::end(exports),
                                     [&](const Export& candidate) { return candidate.name == exportName; });
    return static_cast<std::size_t>(found - std::begin(exports));
}

cases::SymbolLookup lookupIn(const Exits& exits, void (*free)(void*)) {
    return [&exits, free](const std::string& name) {
        if (name == "voptMemFree") return reinterpret_cast<void*>(free);
        const std::size_t index = indexOf(name);
        return index < exportNumber ? reinterpret_cast<void*>(exits[index]) : nullptr;
    };
}

// The conversation that is being recorded.
struct Recorder {
    Conversation steps;
    std::vector<std::string> handles;

    void take(const char* exportName, std::string input) {
        Step step{exportName, std::nullopt, std::move(input)};
        // An address may have been given out twice: the handle is that of the younger object.
        for (std::size_t object = handles.size(); object-- > 0;) {
            const std::string& handle = handles[object];
            if (step.input.compare(0, handle.size(), handle) != 0) continue;
            step.object = object;
            step.input.erase(0, handle.size());
            break;
        }
        steps.push_back(std::move(step));
    }
};

Recorder* recorder = nullptr;

template <std::size_t index>
void recordedExit(tagExitParamStruct* param) {
    recorder->take(exports[index].name, std::string(param->inputText, param->inputLength));
    exports[index].exit(param);
    if (exports[index].exit == CreateStruct && param->returnCode == 0)
        recorder->handles.emplace_back(param->outputText, param->outputLength);
}

// How the next call is to fail, and what was seen of the last one.
Plan nextPlan;
Outcome lastCall;

template <std::size_t index>
void watchedExit(tagExitParamStruct* param) {
    Watch watch(std::exchange(nextPlan, Plan()));
    try {
        lastCall.ending = Ending::returned;
        exports[index].exit(param);
    } catch (const std::bad_alloc&) {
        lastCall.ending = Ending::badAlloc;
    } catch (const xercesc::OutOfMemoryException&) {
        lastCall.ending = Ending::parserOutOfMemory;
    } catch (...) {
        lastCall.ending = Ending::otherException;
    }
    lastCall.allocations = watch.allocations();
    lastCall.firstFailed = watch.firstFailed();
    lastCall.secondFailed = watch.secondFailed();
}

void watchedFree(void* pointer) {
    const Watch watch{Plan()};
    voptMemFree(pointer);
}

bool isUntouched(const cases::Answer& answer) {
    return answer.breach.empty() && answer.output == cases::Answer::Output::untouched;
}

template <std::size_t... indices>
constexpr Exits recordedExits(std::index_sequence<indices...>) {
    return {recordedExit<indices>...};
}

template <std::size_t... indices>
constexpr Exits watchedExits(std::index_sequence<indices...>) {
    return {watchedExit<indices>...};
}

constexpr Exits recorded = recordedExits(std::make_index_sequence<exportNumber>());
constexpr Exits watched = watchedExits(std::make_index_sequence<exportNumber>());

}  // namespace

Conversation recordedFrom(const std::string& casePath) {
    Recorder recording;
    recorder = &recording;
    const cases::Host host(lookupIn(recorded, voptMemFree));
    for (const cases::Failure& failure : cases::runCase(cases::readCase(casePath), host))
        throw std::runtime_error(casePath + ":" + std::to_string(failure.line) + ": " + failure.text);
    return recording.steps;
}

bool hasFailureReply(const std::string& exportName) {
    return exports[indexOf(exportName)].hasFailureReply;
}

bool isRefused(const Outcome& outcome) {
    constexpr int32_t refused = -1;
    return outcome.ending == Ending::returned && outcome.answer.returnCode == refused && isUntouched(outcome.answer);
}

bool isFailureReply(const Outcome& outcome) {
    const cases::Answer& answer = outcome.answer;
    return outcome.ending == Ending::returned && answer.breach.empty() && answer.reply == "-99" &&
           answer.returnCode == cases::Host::presetReturnCode;
}

bool isException(const Outcome& outcome, Ending ending) {
    return outcome.ending == ending && isUntouched(outcome.answer) &&
           outcome.answer.returnCode == cases::Host::presetReturnCode;
}

std::string describe(const Step& step, const Outcome& outcome) {
    switch (outcome.ending) {
        case Ending::badAlloc:
            return "std::bad_alloc left the call";
        case Ending::parserOutOfMemory:
            return "the parser's exception for a lack of memory left the call";
        case Ending::otherException:
            return "an exception left the call";
        case Ending::returned:
            break;
    }
    const cases::Answer& answer = outcome.answer;
    if (!answer.breach.empty()) return answer.breach;
    std::string text = answer.returnCode == cases::Host::presetReturnCode
                           ? "return code untouched"
                           : "return code " + std::to_string(answer.returnCode);
    if (answer.output == cases::Answer::Output::untouched) return text + ", output untouched";
    if (answer.output == cases::Answer::Output::none) return text + ", no reply";
    if (step.exportName == "CreateStruct" && answer.returnCode == 0) return text + ", a handle";
    return text + ", reply \"" + cases::escape(answer.reply) + '"';
}

Stage::Stage() : host_(lookupIn(watched, watchedFree)) {}

Stage::~Stage() {
    for (std::size_t object = 0; object < handles_.size(); ++object)
        if (!handles_[object].empty()) play({"DestroyStruct", object, ""});
}

Outcome Stage::play(const Step& step, Plan plan) {
    const std::string input = inputOf(step);
    nextPlan = plan;
    const cases::Answer answer = host_.call(step.exportName, input);
    Outcome outcome = lastCall;
    outcome.answer = answer;
    followObjects(step, outcome);
    return outcome;
}

std::string Stage::inputOf(const Step& step) const {
    return step.object ? handles_.at(*step.object) + step.input : step.input;
}

void Stage::followObjects(const Step& step, const Outcome& outcome) {
    const bool isDone = outcome.ending == Ending::returned && outcome.answer.returnCode == 0;
    if (step.exportName == "CreateStruct" && isDone) handles_.push_back(outcome.answer.reply);
    if (step.exportName == "DestroyStruct" && isDone && step.object) handles_[*step.object].clear();
}

}  // namespace robustness
