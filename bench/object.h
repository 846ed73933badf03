// One object of the library, as a host holds it: the handle, and behind it in the same buffer the input of the next
// call.
#pragma once

#include <ediexit.h>

#include <string>

class Object {
public:
    /// Calls CreateStruct. Throws std::runtime_error where it answers without a handle.
    explicit Object(std::string grammar);
    Object(Object const&) = delete;
    Object& operator=(Object const&) = delete;
    Object(Object&& other) noexcept;
    ~Object();

    void setDelimiters(std::string const& delimiters);

    /// Puts a stream behind the handle, for validate(), or rule records, for runRules().
    void take(std::string const& stream);

    /// Calls ValidateStruct, and nothing beside it, so that this is what a clock may stand around.
    void validate() { ValidateStruct(&call); }

    /// Calls RunRules over what stands behind the handle.
    void runRules() { RunRules(&call); }

    /// Whether the last call ended without findings.
    bool isClean() const { return call.returnCode == 0 && !call.outputText; }

private:
    tagExitParamStruct call = {};
    std::string handle;
    std::string input;

    void prepare(std::string const& text);
};
