#include "walkmodel.h"

#include <algorithm>
#include <cctype>
#include <cstdio>

namespace walkmodel {
namespace {

const std::string loopWord = "Loop";
const std::string groupWord = "UnorderedGroup";

bool beginsWith(const std::string& text, const std::string& start) {
    return text.compare(0, start.size(), start) == 0;
}

std::string fromCharacter(size_t number, const std::string& text) {
    return text.size() < number ? "" : text.substr(number - 1);
}

/* What a loop's name holds behind its word and one separating character. */
std::string tailOfLoop(const std::string& text) {
    return fromCharacter(loopWord.size() + 2, text);
}

std::string tailOfGroup(const std::string& text) {
    return fromCharacter(groupWord.size() + 2, text);
}

bool isDigit(char character) {
    return std::isdigit(static_cast<unsigned char>(character)) != 0;
}

struct Finding {
    int number;
    int elementPosition;
    std::string name;
    std::string code;
    std::string loop;
    std::string transaction;
    std::string segment;
    std::string text;
    std::string value;

    std::string line() const {
        std::array<char, 256> buffer{};
        std::snprintf(buffer.data(), buffer.size(), "%10.10d%3.3d00%-8.8s%-5.5s%-6.6s%-4.4s%-4.4s%-80.80s%-50.50s$",
                      number, elementPosition, name.c_str(), code.c_str(), loop.c_str(), transaction.c_str(),
                      segment.c_str(), text.c_str(), value.c_str());
        return buffer.data();
    }
};

/* A node with what a walk counts in it. */
struct Walker {
    explicit Walker(const Node& node)
        : type(node.type),
          name(node.name),
          requirement(node.requirement),
          minRepeat(node.minRepeat),
          maxRepeat(node.maxRepeat),
          identifiers(node.identifiers),
          children(node.children.begin(), node.children.end()) {
        const size_t slots = 20;
        if (identifiers.size() > slots) identifiers.resize(slots);
    }

    NodeType type;
    std::string name;
    char requirement;
    int minRepeat;
    int maxRepeat;
    std::vector<std::string> identifiers;
    std::vector<Walker> children;

    int repeats = 0;
    int unidentified = 0;
    bool identifierMissed = false;

    /* What reports call the node. A loop answers with its first child's own name, a group asks its first child. */
    std::string objectName() const {
        if (type == NodeType::segment) return name;
        if (children.empty()) return "";
        return type == NodeType::loop ? children[0].name : children[0].objectName();
    }

    bool isMissing() const { return requirement == 'M' && repeats == 0; }
    bool isOverLimit() const { return maxRepeat != 0 && repeats > maxRepeat; }
    int size() const { return type == NodeType::loop ? static_cast<int>(children.size()) : 1; }
};

bool isTrailer(const std::string& name) {
    return name == "SE" || name == "UNT";
}

class Walk {
public:
    Walk(const Grammar& grammar, const std::vector<Record>& theRecords, char theDelimiter, std::string theTerminator)
        : kind(grammar.kind),
          roots(grammar.nodes.begin(), grammar.nodes.end()),
          records(theRecords),
          delimiter(theDelimiter),
          terminator(std::move(theTerminator)) {
        const std::string year = grammar.version.substr(0, 4);
        skipNotes = kind == 1 && year.size() == 4 && year >= "2003" && year <= "3060";
        const std::string release = grammar.version.substr(0, 3);
        for (const char* const special : {"D  ", "S  ", "1  ", "2  ", "4  ", "88 ", "89 ", "90 "}) {
            if (release == special) searchForInitiator = keepErrorsOfFailedPass = false;
        }
    }

    Outcome run() {
        walkRoot();
        for (const Finding& finding : findings)
            outcome.report += finding.line();
        return std::move(outcome);
    }

private:
    const int kind;
    std::vector<Walker> roots;
    const std::vector<Record>& records;
    const char delimiter;
    const std::string terminator;
    bool skipNotes = false;
    bool searchForInitiator = true;
    bool keepErrorsOfFailedPass = true;

    int current = 0;  // the number of the record on offer
    std::vector<Finding> findings;
    Outcome outcome;

    void happened(Event event) { ++outcome.events[static_cast<size_t>(event)]; }

    Record onOffer() const {
        const bool exists = current >= 1 && current <= static_cast<int>(records.size());
        return exists ? records[static_cast<size_t>(current) - 1] : Record{};
    }

    std::string identifierOnOffer() const { return kind == 2 ? onOffer().identifier : ""; }

    void advance() {
        ++current;
        while (skipNotes && onOffer().id == "NTE") {
            happened(Event::noteSkipped);
            ++current;
        }
    }

    void report(int number, const std::string& name, const std::string& code, const std::string& loop) {
        findings.push_back({number, 0, name, code, loop, "NONE", "SEG", "ERROR", "Element Text"});
    }

    void locate(const std::string& id, const std::string& loop) {
        if (kind != 2) return;
        const std::string& text = onOffer().text;
        const size_t first = text.find(delimiter);
        outcome.loopText += id.substr(0, 3) + delimiter + loop.substr(0, 6) + delimiter +
                            (first == std::string::npos ? "" : text.substr(first + 1)) + terminator;
    }

    /* Offers the record to a node. True if the node is a segment and took it; loops and groups move the cursor. */
    bool offer(Walker& node, const std::string& place, bool isRoot) {
        switch (node.type) {
            case NodeType::segment:
                return offerToSegment(node, place, isRoot);
            case NodeType::loop:
                offerToLoop(node);
                return false;
            case NodeType::group:
                offerToGroup(node);
                return false;
        }
        return false;
    }

    bool offerToSegment(Walker& node, const std::string& place, bool isRoot) {
        if (onOffer().id != node.name) return false;
        ++node.repeats;
        locate(node.name, place);
        if (node.isOverLimit()) {
            happened(Event::segmentOverLimit);
            report(current, node.name, "5", isRoot ? "LOOP" : tailOfLoop(place));
        }
        return true;
    }

    /* ---- loops ---- */

    enum class Verdict { accepted, otherSegment, otherIdentifier };

    Verdict judge(Walker& loop) {
        if (loop.children.empty()) return Verdict::otherSegment;
        const Walker& initiator = loop.children[0];
        const std::string initiatorName = initiator.objectName();
        if (initiatorName.empty() || initiatorName != onOffer().id) return Verdict::otherSegment;
        if (kind != 2 || initiator.identifiers.empty()) return Verdict::accepted;
        const std::string identifier = identifierOnOffer();
        if (identifier.empty()) {
            happened(Event::iterationWithoutIdentifier);
            ++loop.unidentified;
            return Verdict::accepted;
        }
        const auto& known = initiator.identifiers;
        if (std::find(known.begin(), known.end(), identifier) != known.end()) return Verdict::accepted;
        happened(Event::identifierMiss);
        return Verdict::otherIdentifier;
    }

    void offerToLoop(Walker& loop) {
        loop.identifierMissed = false;
        int claimedBefore = -1;
        while (true) {
            const Verdict verdict = judge(loop);
            if (verdict == Verdict::accepted) {
                if (!runIteration(loop)) return;
            } else {
                if (!searchForInitiator) return;
                if (verdict == Verdict::otherIdentifier) loop.identifierMissed = true;
                if (!isClaimedByLaterChild(loop)) return;
                if (claimedBefore == current) {
                    happened(Event::idleCycleEnded);
                    return;
                }
                claimedBefore = current;
                runIterationWithoutInitiator(loop);
            }
            advance();
        }
    }

    /* False if the iteration was taken back, with its last record on offer again. */
    bool runIteration(Walker& loop) {
        happened(Event::iteration);
        const std::string id = tailOfLoop(loop.name);
        clearFrom(0, loop);
        ++loop.repeats;
        const size_t errorsBefore = findings.size();
        reportIterationsOverLimit(loop);
        const size_t errorsOfLimit = findings.size() - errorsBefore;
        locate(onOffer().id, id);
        walkBehindInitiator(loop, id);
        if (errorsOfLimit > 0 && findings.size() > errorsBefore + errorsOfLimit) {
            happened(Event::retreat);
            findings.resize(errorsBefore);
            return false;
        }
        return true;
    }

    void runIterationWithoutInitiator(Walker& loop) {
        happened(Event::iterationWithoutInitiator);
        clearFrom(1, loop);
        report(current, loop.children[0].name, "3", tailOfLoop(loop.name));
        ++loop.repeats;
        reportIterationsOverLimit(loop);
        --current;
        walkBehindInitiator(loop, loop.name);
    }

    static void clearFrom(size_t first, Walker& loop) {
        for (size_t i = first; i < loop.children.size(); ++i)
            loop.children[i].repeats = loop.children[i].unidentified = 0;
    }

    bool isClaimedByLaterChild(const Walker& loop) const {
        const std::string id = onOffer().id;
        if (id.empty()) return false;
        for (size_t i = 1; i < loop.children.size(); ++i) {
            const Walker& child = loop.children[i];
            if ((child.type == NodeType::group ? child.objectName() : child.name) == id) return true;
        }
        return false;
    }

    void reportIterationsOverLimit(const Walker& loop) {
        if (!loop.isOverLimit()) return;
        if (loop.unidentified != 0 && loop.maxRepeat >= loop.repeats - loop.unidentified) {
            happened(Event::limitSparedByUnidentified);
            return;
        }
        happened(Event::iterationOverLimit);
        report(current, loop.children[0].name, loop.children.size() == 1 ? "5" : "4", tailOfLoop(loop.name));
    }

    /* Leaves the cursor one record in front of the first that was not consumed. */
    void walkBehindInitiator(Walker& loop, const std::string& place) {
        advance();
        const std::string id = !place.empty() && isDigit(place[0]) ? place : tailOfLoop(place);
        for (size_t i = 1; i < loop.children.size(); ++i) {
            Walker& child = loop.children[i];
            while (offer(child, place, false))
                advance();
            const std::string name = child.objectName();
            if (isTrailer(name)) continue;
            if (child.isMissing()) {
                happened(Event::missingInLoop);
                report(current, name, "3", id);
            }
            if (child.minRepeat > 0 && child.repeats < child.minRepeat) {
                happened(Event::tooFewInLoop);
                report(current, name, "1", id);
            }
        }
        --current;
    }

    /* ---- groups ---- */

    void offerToGroup(Walker& group) {
        for (Walker& child : group.children)
            child.repeats = 0;
        bool consumedAtAll = false;
        while (!group.children.empty()) {
            if (runPass(group)) {
                consumedAtAll = true;
            } else if (identifierWasMissed(group)) {
                reportUnknownIdentifier(group);
                advance();
                consumedAtAll = true;
            } else {
                break;
            }
        }
        if (consumedAtAll) settle(group);
        const bool likeSegments = !group.children.empty() && group.children.back().size() == 1;
        reportOccurrencesOverLimit(group, current - group.repeats + group.maxRepeat, likeSegments,
                                   Event::groupLimitAtEnd);
    }

    bool runPass(Walker& group) {
        happened(Event::groupPass);
        bool consumed = false;
        for (Walker& child : group.children) {
            const int offered = current;
            if (offer(child, group.name, false)) happened(Event::segmentInGroup);
            if (current == offered) continue;
            consumed = true;
            reportOccurrencesOverLimit(group, group.maxRepeat - group.repeats + 1 + current, group.children.size() == 1,
                                       Event::groupLimitInPass);
        }
        return consumed;
    }

    static bool identifierWasMissed(const Walker& group) {
        return std::any_of(group.children.begin(), group.children.end(),
                           [](const Walker& child) { return child.type == NodeType::loop && child.identifierMissed; });
    }

    void reportUnknownIdentifier(const Walker& group) {
        happened(Event::recordSteppedOver);
        const std::string name = group.children[0].objectName();
        report(current, name, "8", tailOfLoop(group.children[0].name));
        const std::string identifier = identifierOnOffer();
        if (identifier.empty()) return;
        const bool holdsLineEnd = identifier.find('$') != std::string::npos;
        findings.push_back({current, name == "HL" ? 3 : 1, name, "7", "", "", "", "", holdsLineEnd ? " " : identifier});
    }

    void settle(Walker& group) {
        happened(Event::groupSettled);
        for (Walker& child : group.children) {
            const bool isCapped = child.maxRepeat > 0 && child.maxRepeat < child.repeats;
            if (isCapped) happened(Event::groupCountCapped);
            group.repeats += isCapped ? child.maxRepeat : child.repeats;
            const std::string loop = tailOfLoop(child.name);
            std::string name = settledName(group, child);
            if (child.isMissing()) {
                happened(Event::groupMissingChild);
                reportMissing(group, child, name, loop);
            }
            if (child.minRepeat > 0 && child.repeats < child.minRepeat) {
                happened(Event::groupTooFewOfChild);
                name = settledName(group, child);
                reportMissing(group, child, name, loop);
            }
        }
    }

    void reportMissing(Walker& group, Walker& child, const std::string& name, const std::string& loop) {
        report(current, name, "3", loop);
        ++child.repeats;
        ++group.repeats;
    }

    /* A group's child that is a group itself loses the front of its name for good. */
    std::string settledName(const Walker& group, Walker& child) {
        if (beginsWith(child.name, loopWord)) return group.children[0].objectName();
        if (beginsWith(child.name, groupWord)) {
            happened(Event::groupRenamed);
            child.name = tailOfGroup(child.name);
        }
        return child.name;
    }

    void reportOccurrencesOverLimit(const Walker& group, int number, bool likeSegments, Event event) {
        if (!group.isOverLimit()) return;
        happened(event);
        std::string text = tailOfGroup(group.name);
        text.erase(text.begin(), std::find_if(text.begin(), text.end(), isDigit));
        if (text.empty()) text = "LOOP";
        for (int i = group.maxRepeat; i < group.repeats; ++i)
            report(number++, group.objectName(), likeSegments ? "5" : "4", text);
    }

    /* ---- the root ---- */

    void walkRoot() {
        size_t place = 0;
        while (current < static_cast<int>(records.size())) {
            advance();
            const size_t errorsBefore = findings.size();
            size_t i = place;
            while (i < roots.size() && !offer(roots[i], "", true))
                reportPassedOver(roots[i++]);
            if (i < roots.size()) {
                place = i;
                continue;
            }
            if (!keepErrorsOfFailedPass && findings.size() > errorsBefore) {
                happened(Event::passErrorsDropped);
                findings.resize(errorsBefore);
            }
            happened(current > static_cast<int>(records.size()) ? Event::outOfSequenceBehindEnd : Event::outOfSequence);
            report(current, onOffer().id, "2", "LOOP");
            break;
        }
        for (size_t i = place + 1; i < roots.size(); ++i) {
            if (!roots[i].isMissing() || isTrailer(roots[i].objectName())) continue;
            happened(Event::missingAtClose);
            report(static_cast<int>(i) + 1, roots[i].objectName(), "3", "LOOP");
        }
    }

    void reportPassedOver(const Walker& node) {
        const std::string name = node.objectName();
        if (isTrailer(name)) return;
        if (node.isMissing()) {
            happened(Event::missingAtRoot);
            report(current, name, "3", "LOOP");
        }
        if (node.repeats > 0 && node.repeats < node.minRepeat) {
            happened(Event::tooFewAtRoot);
            report(current, name, "1", "LOOP");
        }
    }
};

}  // namespace

Outcome walk(const Grammar& grammar, const std::vector<Record>& records, char elementDelimiter,
             const std::string& terminator) {
    return Walk(grammar, records, elementDelimiter, terminator).run();
}

}  // namespace walkmodel
