// The exit library, loaded at run time, and one object of it.
//
// A Library outlives its Objects. Every call fills a call record of its own, and each reply is copied and given back to
// the library at once. An export is looked up when it is first needed, so that a library that lacks one serves every
// command that does without it.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "ediexit.h"
#include "failure.h"

namespace edicheck {

class Library {
public:
    // `path` as dlopen takes it. Throws Failure when the library cannot be loaded.
    explicit Library(const std::string& path);

    // Calls the exit function `name` with a copy of `input` and returns the reply, empty where there is none. Throws
    // Failure when the export is missing, when the call is refused, and when the library ran out of memory.
    std::string call(const char* name, std::string input) const;

    // Throws Failure when the library has no such export.
    void require(const char* name) const;

private:
    void* find(const char* name) const;

    struct Close {
        void operator()(void* handle) const;
    };
    std::string path_;
    std::unique_ptr<void, Close> handle_;
};

// The library said that the call cannot be done with this input (return code -1).
class Refused : public Failure {
public:
    using Failure::Failure;
};

// One object of the library: made of a grammar, good for one message, released at the end.
class Object {
public:
    // Throws Refused when the library refuses the grammar.
    Object(const Library& library, const std::string& grammarText);
    ~Object();
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    void setDelimiters(std::string_view delimiters);
    std::string validateStruct(std::string_view stream);
    std::string loopText();
    std::string runRules(std::string_view records);
    std::string validateXml(std::string_view option, std::string_view document);

private:
    std::string call(const char* name, std::string_view input = {});

    const Library& library_;
    std::string handle_;
};

}  // namespace edicheck
