// Conversations of a host with the library's objects, call by call, so that any call of them can be made to run out of
// memory. The exports are those that are linked into the program.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "failingallocator.h"
#include "host.h"

namespace robustness {

// One call. Objects are counted from 0, in the order in which the conversation makes them.
struct Step {
    std::string exportName;
    std::optional<std::size_t> object;  // whose handle stands in front of the input; none for a call without
    std::string input;
};

using Conversation = std::vector<Step>;

// The calls that a case file makes. Throws cases::CaseError, or std::runtime_error if the case doesn't hold.
Conversation recordedFrom(const std::string& casePath);

// Whether an export answers with a reply where memory runs out.
bool hasFailureReply(const std::string& exportName);

// How a call came to its end.
enum class Ending { returned, badAlloc, parserOutOfMemory, otherException };

struct Outcome {
    Ending ending = Ending::returned;
    cases::Answer answer;  // of a call that returned
    std::size_t allocations = 0;
    Kind firstFailed = Kind::none;
    Kind secondFailed = Kind::none;
};

// Whether a call was refused: return code -1, and the output fields as they were.
bool isRefused(const Outcome& outcome);
// Whether it answered "-99", with the return code as it was.
bool isFailureReply(const Outcome& outcome);
// Whether an exception left it, with the record as it was.
bool isException(const Outcome& outcome, Ending ending);

// What a host sees of a call that returned, in one line; handles are left out, since they differ from run to run.
std::string describe(const Step& step, const Outcome& outcome);

// A host that plays conversations, under watch. Whatever it has made is destroyed at its end.
class Stage {
public:
    Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;
    ~Stage();

    Outcome play(const Step& step, Plan plan = {});

private:
    cases::Host host_;
    std::vector<std::string> handles_;  // by object; empty for one that is destroyed

    std::string inputOf(const Step& step) const;
    void followObjects(const Step& step, const Outcome& outcome);
};

}  // namespace robustness
