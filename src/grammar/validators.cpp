// The validator classes: what each node answers, and how a tree is taken down.
#include "grammar/validators.h"

#include "common/text.h"

Segment::~Segment() = default;

int Validator::validateLoop(DataSegment* data, char const* segment, char const* identifier, char const* loopContext,
                            int kind, IdentifierBuffer* identifiers) {
    validateStructure(data, segment, identifier, loopContext, kind, identifiers);
    return 0;
}

int Validator::getType() {
    return containerType;
}

char const* Validator::getObjectName() {
    return segmentId;
}

int Validator::getLoopSize() {
    return 1;
}

int Validator::checkLoopId() {
    return 0;
}

Validators::Validators() : PointerArray(16, 8) {}

Validators::~Validators() = default;

ValidationContext::ValidationContext(unsigned long walkFlags, ErrorInfos* sharedErrorInfos, SegLists* sharedSegLists)
    : flags(walkFlags), errorInfos(sharedErrorInfos), segLists(sharedSegLists) {}

ValidationContext::~ValidationContext() {
    deleteChildren();
}

// Goes down to a node without children, deletes it and comes back up by `context`, which every node has to spare here.
void ValidationContext::deleteChildren() {
    ValidationContext* open = this;
    while (open != this || open->children.count > 0) {
        if (open->children.count > 0) {
            Validator* child = open->children.data[--open->children.count];
            auto* below = dynamic_cast<ValidationContext*>(child);
            if (below && below->children.count > 0) {
                child->context = open;
                open = below;
            } else {
                delete child;
            }
        } else {
            auto* emptied = dynamic_cast<Validator*>(open);
            open = emptied->context;
            delete emptied;
        }
    }
    std::free(children.data);
    children.data = nullptr;
}

int SegmentValidator::getType() {
    return segmentType;
}

char const* Loop::getObjectName() {
    return children.count > 0 ? children.data[0]->segmentId : "";
}

int Loop::getLoopSize() {
    return children.count;
}

int Loop::checkLoopId() {
    return loopIdMissing;
}

int choiceLoop::getType() {
    return groupType;
}

// Groups within groups may be nested to any depth, so the line of first children is followed without recursion.
char const* choiceLoop::getObjectName() {
    choiceLoop const* group = this;
    while (group->children.count > 0) {
        Validator* first = group->children.data[0];
        if (first->getType() != groupType) return first->getObjectName();
        group = static_cast<choiceLoop const*>(first);
    }
    return "";
}

EDI_Structure::EDI_Structure(int kind, ErrorInfos* ownedErrorInfos, SegLists* ownedSegLists)
    : ValidationContext(0, ownedErrorInfos, ownedSegLists), grammarKind(kind) {
    copyText(segmentId, kind == 1 ? "1X12" : "2X12", segmentIdLength);
    requirement = 'M';
}

char const* EDI_Structure::getObjectName() {
    return children.count > 0 ? children.data[0]->getObjectName() : "";
}
