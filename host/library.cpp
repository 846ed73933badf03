// Loading the library with dlopen, and the calls.
#include "library.h"

#include <dlfcn.h>

#include <utility>

namespace edicheck {

namespace {

constexpr int kRefused = -1;
constexpr std::string_view kOutOfMemory = "-99";

using ExitFunction = void (*)(tagExitParamStruct*);
using FreeFunction = void (*)(void*);

}  // namespace

void Library::Close::operator()(void* handle) const {
    dlclose(handle);
}

Library::Library(const std::string& path) : path_(path), handle_(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (!handle_) {
        throw Failure("the library cannot be loaded: " + std::string(dlerror()) +
                      "; give its place with --library PATH");
    }
}

void* Library::find(const char* name) const {
    void* symbol = dlsym(handle_.get(), name);
    if (symbol == nullptr) {
        throw Failure("the library " + path_ + " has no export " + name +
                      "; give the place of another one with --library PATH");
    }
    return symbol;
}

void Library::require(const char* name) const {
    find(name);
}

std::string Library::call(const char* name, std::string input) const {
    const auto function = reinterpret_cast<ExitFunction>(find(name));

    tagExitParamStruct record{};
    record.inputText = input.data();
    record.inputLength = input.size();
    function(&record);

    std::string reply;
    if (record.outputText != nullptr) {
        const auto giveBack = reinterpret_cast<FreeFunction>(find("voptMemFree"));
        const std::unique_ptr<char, FreeFunction> owned(record.outputText, giveBack);
        reply.assign(owned.get(), record.outputLength);
    }
    if (record.returnCode == kRefused) throw Refused(std::string(name) + " was refused (return code -1)");
    if (reply == kOutOfMemory) throw Failure(std::string(name) + " ran out of memory (reply -99)");
    return reply;
}

Object::Object(const Library& library, const std::string& grammarText) : library_(library) {
    library_.require("DestroyStruct");
    handle_ = library_.call("CreateStruct", grammarText);
}

Object::~Object() {
    try {
        call("DestroyStruct");
    } catch (const Failure&) {
        // The object is gone for this tool either way, and there is nobody left to tell.
    }
}

void Object::setDelimiters(std::string_view delimiters) {
    call("SetDelimiters", delimiters);
}

std::string Object::validateStruct(std::string_view stream) {
    return call("ValidateStruct", stream);
}

std::string Object::loopText() {
    return call("GetLoopText");
}

std::string Object::runRules(std::string_view records) {
    return call("RunRules", records);
}

std::string Object::validateXml(std::string_view option, std::string_view document) {
    return call("ValidateXML", std::string(option).append(document));
}

std::string Object::call(const char* name, std::string_view input) {
    std::string whole;
    whole.reserve(handle_.size() + input.size());
    whole.append(handle_).append(input);
    return library_.call(name, std::move(whole));
}

}  // namespace edicheck
