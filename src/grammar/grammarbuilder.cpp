// The grammar builder.
#include "grammar/grammarbuilder.h"

#include <cstdlib>
#include <cstring>
#include <memory>

#include "common/text.h"
#include "grammar/validators.h"

namespace {

constexpr char cDelimiter[] = "|";
constexpr char recordEnd = '$';

/// The fields of one record; null for one that isn't there.
struct Record {
    char* requirement;
    char* minRepeat;
    char* maxRepeat;
    char* name;
    char* identifiers[identifierSlots];

    bool isComplete() const { return requirement && minRepeat && maxRepeat && name; }
};

Record splitRecord(char* text) {
    char* rest = nullptr;
    Record record = {};
    record.requirement = strtok_r(text, cDelimiter, &rest);
    auto const nextField = [&rest] { return strtok_r(nullptr, cDelimiter, &rest); };
    record.minRepeat = record.requirement ? nextField() : nullptr;
    record.maxRepeat = record.minRepeat ? nextField() : nullptr;
    record.name = record.maxRepeat ? nextField() : nullptr;
    char* field = record.name;
    for (char*& identifier : record.identifiers)
        identifier = field = field ? nextField() : nullptr;
    if (field) nextField();  // the field behind the last slot is read and dropped
    return record;
}

int numberOf(char const* field) {
    return static_cast<int>(std::strtoul(field, nullptr, 10));
}

/// The version text at the head of a grammar, in a field of zeros: a shorter text compares as if filled with NUL.
class VersionText {
public:
    /// `field` is the first field of the first record: version text and, as its last character, the requirement.
    explicit VersionText(char const* field) {
        std::size_t const fieldLength = std::strlen(field);
        if (fieldLength < 3) return;
        copyText(text, field, fieldLength - 1 < longest ? fieldLength - 1 : longest);
    }

    unsigned long flags(int grammarKind) const {
        unsigned long bits = 0;
        bool const fromNotesYears = std::memcmp(text, "2003", 4) >= 0 && std::memcmp(text, "3060", 4) <= 0;
        if (grammarKind == 1 && fromNotesYears) bits |= skipNotes;
        if (isEarlyStandard()) bits |= noInitiatorSearch | dropFailedPassErrors;
        return bits;
    }

private:
    static constexpr std::size_t longest = 29;
    static constexpr char const* earlyStandards[] = {"D  ", "S  ", "1  ", "2  ", "4  ", "88 ", "89 ", "90 "};
    char text[longest + 1] = {};

    bool isEarlyStandard() const {
        for (char const* version : earlyStandards)
            if (std::memcmp(text, version, 3) == 0) return true;
        return false;
    }
};

/// Makes nodes and hangs them under the innermost open one.
class TreeBuilder {
public:
    explicit TreeBuilder(EDI_Structure& tree) : root(tree) {}

    void take(Record const& record, char requirement) {
        if (startsWith(record.name, "UnorderedGroup"))
            openNode<choiceLoop>(record, requirement);
        else if (startsWith(record.name, "EndUnorderedGroup"))
            closeNode();
        else if (startsWith(record.name, "Loop"))
            openNode<Loop>(record, requirement);
        else if (startsWith(record.name, "EndLoop"))
            closeNode();
        else
            addNode(std::make_unique<SegmentValidator>(), record, requirement);
    }

private:
    EDI_Structure& root;
    ValidationContext* open = &root;  // the innermost open node

    template <typename Node>
    void openNode(Record const& record, char requirement) {
        ValidationContext* parent = open;
        Node* node = addNode(std::make_unique<Node>(root.flags, root.errorInfos, root.segLists), record, requirement);
        node->context = parent;
        open = node;
    }

    /// Closing more than was opened stays at the root.
    void closeNode() {
        if (open != &root) open = dynamic_cast<Validator*>(open)->context;
    }

    template <typename Node>
    Node* addNode(std::unique_ptr<Node> node, Record const& record, char requirement) {
        copyText(node->segmentId, record.name, segmentIdLength);
        node->requirement = requirement;
        node->minRepeat = numberOf(record.minRepeat);
        node->maxRepeat = numberOf(record.maxRepeat);
        if (root.identifierBuffer) storeIdentifiers(*node, record);
        open->children.add(node.get());
        return node.release();
    }

    void storeIdentifiers(Validator& node, Record const& record) {
        for (int slot = 0; slot < identifierSlots && record.identifiers[slot]; ++slot)
            node.identifierOffsets[slot] = root.identifierBuffer->add(record.identifiers[slot]);
    }
};

}  // namespace

int grammarKindOf(char const* text) {
    return text[0] == '1' ? 1 : 2;
}

bool buildGrammar(EDI_Structure& root, char* text, std::size_t length) {
    if (length == 0) return true;
    TreeBuilder builder(root);
    bool isGood = true;
    bool isFirst = true;
    char* const end = text + length;
    char* scan = text + 1;
    while (scan < end) {
        auto* recordText = scan;
        auto* terminator = static_cast<char*>(std::memchr(scan, recordEnd, static_cast<std::size_t>(end - scan)));
        if (!terminator) break;
        *terminator = '\0';
        scan = terminator + 1;
        while (scan < end && isSpace(*scan))
            ++scan;

        Record const record = splitRecord(recordText);
        if (record.isComplete()) {
            std::size_t const requirementAt = isFirst ? std::strlen(record.requirement) - 1 : 0;
            if (isFirst) root.flags = VersionText(record.requirement).flags(root.grammarKind);
            builder.take(record, record.requirement[requirementAt]);
        } else {
            isGood = false;
        }
        isFirst = false;
    }
    return isGood;
}
