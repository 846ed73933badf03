// One object of the library.
#include "object.h"

#include <stdexcept>
#include <utility>

Object::Object(std::string grammar) : input(std::move(grammar)) {
    call.inputText = input.data();
    call.inputLength = input.size();
    CreateStruct(&call);
    if (call.returnCode != 0 || !call.outputText) throw std::runtime_error("CreateStruct gives no handle");
    handle.assign(call.outputText, call.outputLength);
    voptMemFree(call.outputText);
    call.outputText = nullptr;
}

Object::Object(Object&& other) noexcept
    : call(other.call), handle(std::move(other.handle)), input(std::move(other.input)) {
    other.handle.clear();
    call.inputText = input.data();
}

Object::~Object() {
    if (handle.empty()) return;
    voptMemFree(call.outputText);
    prepare("");
    DestroyStruct(&call);
}

void Object::setDelimiters(std::string const& delimiters) {
    prepare(delimiters);
    SetDelimiters(&call);
}

void Object::take(std::string const& stream) {
    prepare(stream);
}

void Object::prepare(std::string const& text) {
    input = handle + text;
    call.inputText = input.data();
    call.inputLength = input.size();
}
