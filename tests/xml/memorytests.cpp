// What calls leave behind in the process: nothing.
#include <gtest/gtest.h>

#include "residentsize.h"
#include "xmlcalls.h"

namespace xmltests {
namespace {

using cases::residentSize;

// The number of calls is such that a reader left behind by each, of some tens of kilobytes, would be seen many times over.
constexpr int callsToSettle = 100;
constexpr int calls = 5000;
constexpr long slack = 4'000'000;

class Memory : public InSchemaFolder {
protected:
    static void expectNoGrowth(const std::string& document) {
        const Object object;
        for (int i = 0; i < callsToSettle; ++i)
            object.validate(document);
        const long before = residentSize();
        ASSERT_GT(before, 0);
        for (int i = 0; i < calls; ++i)
            object.validate(document);
        EXPECT_LT(residentSize() - before, slack);
    }
};

TEST_F(Memory, does_not_grow_with_clean_documents) {
    expectNoGrowth(order("order.xsd", goodContent));
}

TEST_F(Memory, does_not_grow_with_findings) {
    expectNoGrowth(order("order.xsd", "<number>0</number><line>Bolt</line>"));
}

TEST_F(Memory, does_not_grow_with_schemas_that_are_wrong_or_missing) {
    expectNoGrowth(order("unclosed.xsd", goodContent));
    expectNoGrowth(order("gone.xsd", goodContent));
}

TEST_F(Memory, does_not_grow_where_the_parse_ends_early) {
    expectNoGrowth("<a><b>");
    expectNoGrowth("");
    expectNoGrowth("<?xml version='1.0' encoding='KLINGON'?><a/>");
    expectNoGrowth("<!DOCTYPE a [<!ENTITY x '&y;'><!ENTITY y '&x;'>]><a>&x;</a>");
}

// The parser loses some bytes in each of these.
TEST_F(Memory, does_not_grow_with_document_types_from_files_and_schemas_that_are_folders) {
    expectNoGrowth("<!DOCTYPE order SYSTEM 'order.dtd'>\n<order><line quantity='1'>Bolt</line></order>");
    expectNoGrowth(order("parts", goodContent));
}

// What the parser opens for such an address it loses, and it is not the document's memory that it opens it with.
TEST_F(Memory, does_not_grow_with_addresses_that_are_not_latin_1) {
    expectNoGrowth(order("http://\xD2\x86.invalid/order.xsd", goodContent));
    expectNoGrowth("<!DOCTYPE order SYSTEM 'ftp://\xD2\x86.invalid/order.dtd'>\n<order/>");
}

// What the parser allocated for the table that it could not finish goes with the document: some 60 MB each time.
TEST_F(Memory, does_not_grow_where_a_document_type_is_stopped) {
    std::string model = "((a|b)*,a";
    for (int i = 0; i < 40; ++i)
        model += ",(a|b)";
    const std::string document = "<!DOCTYPE a [<!ELEMENT a " + model + ")><!ELEMENT b EMPTY>]><a><b/></a>";
    validate(document);
    const long before = residentSize();
    for (int i = 0; i < 3; ++i)
        EXPECT_NE(validate(document), "");
    EXPECT_LT(residentSize() - before, 60'000'000);
}

TEST_F(Memory, does_not_grow_with_objects_that_come_and_go) {
    const std::string document = order("order.xsd", "<number>0</number>");
    for (int i = 0; i < callsToSettle; ++i)
        validate(document);
    const long before = residentSize();
    for (int i = 0; i < calls; ++i)
        validate(document);
    EXPECT_LT(residentSize() - before, slack);
}

// An entity bomb is stopped before it takes memory to speak of: each of these would take gigabytes.
TEST_F(Memory, is_not_taken_by_an_entity_bomb) {
    std::string declarations = "<!ELEMENT a (#PCDATA)><!ATTLIST a b CDATA #IMPLIED><!ENTITY e0 'lol'>";
    for (int i = 1; i < 10; ++i)
        declarations +=
            "<!ENTITY e" + std::to_string(i) + " '" + repeated("&e" + std::to_string(i - 1) + ';', 10) + "'>";
    const std::string type = "<!DOCTYPE a [" + declarations + "]>";
    validate("<a/>");
    const long before = residentSize();
    EXPECT_NE(validate(type + "<a>&e9;</a>"), "");
    EXPECT_NE(validate(type + "<a b='&e9;'/>"), "");
    EXPECT_LT(residentSize() - before, slack);
}

}  // namespace
}  // namespace xmltests
