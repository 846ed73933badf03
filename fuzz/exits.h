// A host in miniature for the fuzz targets, linked against the library's objects so that its code is instrumented.
#pragma once

#include <ediexit.h>

#include <string>

namespace fuzz {

/// Calls an export with a copy of `input` that has one NUL behind it and not a byte more, and gives the reply back.
/// Returns the reply; aborts where a reply breaks its contract.
std::string call(void (*exit)(tagExitParamStruct*), std::string const& input);

/// One object of the library.
class Object {
public:
    explicit Object(std::string const& grammar) : handle(fuzz::call(CreateStruct, grammar)) {}
    Object(Object const&) = delete;
    Object& operator=(Object const&) = delete;
    ~Object() {
        if (exists()) call(DestroyStruct);
    }

    /// A grammar that is refused gives no object.
    bool exists() const { return !handle.empty(); }
    std::string call(void (*exit)(tagExitParamStruct*), std::string const& input = {}) const {
        return fuzz::call(exit, handle + input);
    }

private:
    std::string handle;
};

}  // namespace fuzz
