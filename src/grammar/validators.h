// The tree of a grammar: objects that know how to walk a message through themselves.
//
//   SegmentData                       the head of a node, and the record of a message
//     Segment                         a node's limits and counters
//       Validator                     abstract: base of all nodes
//         SegmentValidator            leaf: one segment
//         Loop                        segments and groups behind an initiator    also a ValidationContext
//         choiceLoop                  unordered group                            also a ValidationContext
//         EDI_Structure               the root, which a host's handle names      also a ValidationContext
//
// Ownership: a node with children owns them; the root owns the lists that all nodes share. Nodes are made by the
// grammar builder and walked by src/walk. The counters live in the nodes, so a tree serves one walk, on one thread.
#pragma once

#include "common/pointerarray.h"
#include "grammar/identifierbuffer.h"

class Contents;
class DataSegment;
class ErrorInfos;
class Rules;
class SegLists;
class ValidationContext;

inline constexpr int identifierSlots = 20;

/// The longest name that a node or a record keeps.
inline constexpr int segmentIdLength = 31;

struct SegmentData {
    char segmentId[segmentIdLength + 1];  // NUL-terminated: a node's name, or the id of a record, at most 3 characters
    int position;                         // a record's 0-based ordinal; 0 in a node
    int identifierOffsets
        [identifierSlots];  // in the IdentifierBuffer, 0 for none: what a node allows; a record has slot 0
    char* text;             // borrowed from the copy of the stream: a record's element text; null in kind 1
};

class Segment : public SegmentData {
public:
    char requirement = '\0';  // 'M' is mandatory, every other value optional
    int maxRepeat = 0;        // 0 means no limit
    int repeatCount = 0;      // segments of a leaf, iterations of a Loop, occurrences in a choiceLoop
    int minRepeat = 0;
    int unidentifiedCount = 0;             // iterations of a Loop that began at a record without an identifier
    ValidationContext* context = nullptr;  // borrowed from the parent, which writes it before each offer

    Segment() : SegmentData() {}
    Segment(Segment const&) = delete;
    Segment& operator=(Segment const&) = delete;
    virtual ~Segment();

    bool isMandatory() const { return requirement == 'M'; }
};

/// What getType() answers.
enum ValidatorType { containerType = 1, groupType = 2, segmentType = 3 };

class Validator : public Segment {
public:
    /// Walks the node over the records from the one on offer. `segment` is the id on offer, `identifier` its identifier
    /// or null, `loopContext` tells where the offering node stands, `kind` is the grammar kind.
    virtual void validateStructure(DataSegment* data, char const* segment, char const* identifier,
                                   char const* loopContext, int kind, IdentifierBuffer* identifiers) = 0;

    /// Offers the node a record. The result is 0 on every path of every class; a caller that received another value
    /// would treat the record as taken. What the node did is told by the parent's context and by the cursor.
    virtual int validateLoop(DataSegment* data, char const* segment, char const* identifier, char const* loopContext,
                             int kind, IdentifierBuffer* identifiers);

    virtual int getType();
    /// The name under which findings speak of the node; empty for a node without children.
    virtual char const* getObjectName();
    virtual int getLoopSize();
    virtual int checkLoopId();
};

class Validators : public PointerArray<Validator> {
public:
    /// Throws szFailure where there is no memory.
    Validators();
    virtual ~Validators();
};

/// What a node with children needs for the walk. `matched`, `currentChild` and `advanced` are written by the children.
class ValidationContext {
public:
    int matched = 0;         // 1: a segment child took the record on offer
    int currentChild = 0;    // the child at which the walk of this node stands
    int advanced = 0;        // 1: as `matched`; only the root reads it
    int loopIdMissing = 0;   // 1: a Loop saw its initiator with an identifier that it doesn't know
    unsigned long flags;     // WalkFlags, the same in all nodes of a tree
    Validators children;     // in grammar order; the nodes are owned
    ErrorInfos* errorInfos;  // borrowed from the root, which owns it
    SegLists* segLists;      // borrowed from the root, which owns it; null in kind 1

    /// Throws szFailure where there is no memory.
    ValidationContext(unsigned long walkFlags, ErrorInfos* sharedErrorInfos, SegLists* sharedSegLists);
    ValidationContext(ValidationContext const&) = delete;
    ValidationContext& operator=(ValidationContext const&) = delete;
    virtual ~ValidationContext();

    /// Deletes the children and gives back their array. However deep the tree is, this takes no stack.
    void deleteChildren();
};

/// The bits of `flags`.
enum WalkFlags : unsigned long {
    skipNotes = 1,             // every advance steps over records whose id is "NTE"
    noInitiatorSearch = 2,     // a Loop returns a rejected record at once
    dropFailedPassErrors = 4,  // the root takes back the findings of a pass that failed to place a record
};

class SegmentValidator : public Validator {
public:
    void validateStructure(DataSegment* data, char const* segment, char const* identifier, char const* loopContext,
                           int kind, IdentifierBuffer* identifiers) override;
    int getType() override;
};

class Loop : public Validator, public ValidationContext {
public:
    using ValidationContext::ValidationContext;

    void validateStructure(DataSegment* data, char const* segment, char const* identifier, char const* loopContext,
                           int kind, IdentifierBuffer* identifiers) override;
    int validateLoop(DataSegment* data, char const* segment, char const* identifier, char const* loopContext, int kind,
                     IdentifierBuffer* identifiers) override;
    /// The name of the first child as its grammar record gives it, whatever that child is.
    char const* getObjectName() override;
    int getLoopSize() override;
    int checkLoopId() override;

private:
    enum Verdict { accepted, rejected, identifierMiss };

    Verdict judge(char const* id, int identifierOffset, IdentifierBuffer* identifiers);
    bool allowsIdentifier(char const* identifier, IdentifierBuffer* identifiers) const;
    bool hasLaterChildNamed(char const* id) const;
    void clearCounters(int firstChild);
    bool isOverLimit() const;
    bool reportLimit(int number);
    bool runIteration(DataSegment* data, char const* id, int kind, IdentifierBuffer* identifiers);
    void runIterationWithoutInitiator(DataSegment* data, int kind, IdentifierBuffer* identifiers);
};

class choiceLoop : public Validator, public ValidationContext {
public:
    using ValidationContext::ValidationContext;

    void validateStructure(DataSegment* data, char const* segment, char const* identifier, char const* loopContext,
                           int kind, IdentifierBuffer* identifiers) override;
    int getType() override;
    /// The name of the first plain segment, or of the first Loop's initiator, down the line of first children.
    char const* getObjectName() override;

private:
    // The record that the group declined when it was offered one last, if nothing came of it: no finding, no line, no
    // count. Offered it again, the group would decline it again. Without that, groups within groups would go down to the
    // innermost one for each of them around it, whenever a record is consumed.
    long quietPosition = 0;

    bool walkPasses(DataSegment* data, int kind, IdentifierBuffer* identifiers);
    bool isQuiet(long offered) const;
    bool walkPass(DataSegment* data, int kind, IdentifierBuffer* identifiers);
    bool sawUnknownIdentifier();
    void reportUnknownIdentifier(DataSegment* data, IdentifierBuffer* identifiers);
    void settle(Validator& child, int number);
    void reportShortage(Validator& child, int number, char const* name, char const* loopText);
    char const* reportName(Validator& child);
    void reportLimit(long startNumber, bool single);
};

/// The text of a message that a second ValidateStruct has superseded: located lines still point into it.
struct SupersededCopy {
    char* text;            // owned, from malloc
    SupersededCopy* next;  // owned
};

class EDI_Structure : public Validator, public ValidationContext {
public:
    int grammarKind;                               // 1: structure alone; 2: located lines, rules
    DataSegment* dataSegment = nullptr;            // owned; made by ValidateStruct
    Rules* rules = nullptr;                        // owned; there only during RunRules
    char* dataCopy = nullptr;                      // owned, from malloc; the located lines point into it
    IdentifierBuffer* identifierBuffer = nullptr;  // owned; null in kind 1
    char* xmlMessage = nullptr;                    // owned, from malloc; text of the last ValidateXML
    Contents* contents = nullptr;                  // owned; made by RunRules
    SupersededCopy* supersededCopies = nullptr;    // owned

    /// Takes over the two lists. Throws szFailure where there is no memory.
    EDI_Structure(int kind, ErrorInfos* ownedErrorInfos, SegLists* ownedSegLists);
    /// Releases all that the root owns. It stands with the exports, since it knows every subsystem.
    ~EDI_Structure() override;

    void validateStructure(DataSegment* data, char const* segment, char const* identifier, char const* loopContext,
                           int kind, IdentifierBuffer* identifiers) override;
    char const* getObjectName() override;

private:
    bool placeRecord(DataSegment* data, int kind, IdentifierBuffer* identifiers);
    void reportPassedChild(Validator& child, int number);
    void reportUnplacedRecord(DataSegment* data, int mark);
    void closingCheck();
};
