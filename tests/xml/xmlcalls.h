// Calls of ValidateXML, and its reply taken apart.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

#include "host.h"

namespace xmltests {

const cases::SymbolLookup& library();
const cases::Host& host();

// An object of the library, destroyed at the end of the test.
class Object {
public:
    explicit Object(const std::string& grammar = "2");
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    ~Object();

    const std::string& handle() const { return handle_; }
    cases::Answer call(const std::string& exportName, const std::string& input = "") const;

    // The text of the reply to a document, without the two NULs behind it. Expects what holds for every reply.
    std::string validate(const std::string& document, const std::string& option = "000") const;

private:
    std::string handle_;
};

// The same by an object that serves for this one call.
std::string validate(const std::string& document, const std::string& option = "000");

struct Finding {
    std::string level;
    std::string message;
    long line = 0;
    long column = 0;
};

void PrintTo(const Finding& finding, std::ostream* out);

// The findings of a text. What does not have the form of one comes out as a finding of the level "no finding".
std::vector<Finding> findingsOf(const std::string& text);

// Where and how bad, without the parser's words: "Error 3:7".
std::string placeOf(const Finding& finding);
std::vector<std::string> placesOf(const std::string& text);

std::string repeated(const std::string& text, std::size_t times);

std::filesystem::path schemaFolder();

// A test that stands in the folder of the schemas, as a host does that works in the folder of its documents.
class InSchemaFolder : public testing::Test {
protected:
    InSchemaFolder() : before_(std::filesystem::current_path()) { std::filesystem::current_path(schemaFolder()); }
    ~InSchemaFolder() override { std::filesystem::current_path(before_); }

private:
    std::filesystem::path before_;
};

// An order without namespace, whose schema stands at `location`. The content begins on line 2.
std::string order(const std::string& location, const std::string& content);

// The content of an order that conforms to schemas/order.xsd.
extern const std::string goodContent;

}  // namespace xmltests
