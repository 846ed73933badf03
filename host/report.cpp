// Wording of findings.
#include "report.h"

#include <algorithm>

namespace edicheck {

namespace {

constexpr std::size_t kSegmentIdWidth = 8;  // as wide as findings have it
constexpr std::string_view kRootLoop = "LOOP";
constexpr std::string_view kContextText = "CTX";

std::string inLoop(const Finding& finding) {
    return finding.loopId.empty() || finding.loopId == kRootLoop ? "" : " (loop " + finding.loopId + ")";
}

std::string meaning(const Finding& finding) {
    const std::string& id = finding.segmentId;
    if (finding.code == "1") return "too few " + id + " in front of here" + inLoop(finding);
    if (finding.code == "2" && id.empty()) {
        return "the message ends within a loop or group, where a segment of the grammar's root, such as the trailer, "
               "should end it";
    }
    if (finding.code == "2") {
        return "out of sequence or not expected here; the rest of the message was not looked at";
    }
    if (finding.code == "3") {
        return "mandatory " + id + " (a segment, or the first one of a loop) is missing in front of here" +
               inLoop(finding);
    }
    if (finding.code == "4") return "too many iterations of the loop that begins with " + id + inLoop(finding);
    if (finding.code == "5") return id + " repeats beyond its limit" + inLoop(finding);
    if (finding.code == "7") return "identifier value \"" + finding.elementText + "\" of " + id + " is not known here";
    if (finding.code == "8") return "no loop here takes " + id + " with this identifier" + inLoop(finding);
    return "code without a meaning of its own: " + finding.code + " for " + id + inLoop(finding);
}

bool tellOfOneIdentifier(const Finding& first, const Finding& second) {
    return first.code == "8" && second.code == "7" && first.number == second.number;
}

std::string unknownIdentifier(const Finding& first, const Finding& second) {
    // The loop text of such a finding is that of the group's first loop.
    const std::string group = first.loopId.empty() ? "" : " (group of loop " + first.loopId + ")";
    return "no loop here takes " + first.segmentId + " with the identifier \"" + second.elementText + "\"" + group;
}

std::size_t placeOf(long long number, std::size_t records) {
    if (number < 1) return 0;
    return static_cast<unsigned long long>(number) > records ? records + 1 : static_cast<std::size_t>(number);
}

// Whether the finding names a child of the root by its place behind `lastMatched`, as those of the closing check do.
bool namesChildBehind(const Finding& finding, const std::vector<std::string>& names, std::size_t lastMatched) {
    if (finding.code != "3" || finding.loopId != kRootLoop || finding.number < 1) return false;
    const auto place = static_cast<unsigned long long>(finding.number);
    return place <= names.size() && place > lastMatched &&
           names[place - 1].substr(0, kSegmentIdWidth) == finding.segmentId;
}

// Where the findings of the closing check begin, which carry the child's place in the grammar and no record number.
//
// Behind a record without a place, all are such. Otherwise the walk came to the end of the data, the last record was
// taken by a child of the root, and the closing check names children behind that one; a finding from within the walk
// never does.
std::size_t beginOfClosingCheck(const std::vector<Finding>& findings, const Grammar& grammar,
                                const std::vector<Record>& records) {
    for (std::size_t i = 0; i < findings.size(); ++i) {
        if (findings[i].code == "2") return i + 1;
    }
    const std::vector<std::string>& names = grammar.rootNames();
    std::size_t lastMatched = 1;  // 1-based place; without a record the closing check begins behind the first child
    if (!records.empty()) {
        while (lastMatched <= names.size() && names[lastMatched - 1] != records.back().id)
            ++lastMatched;
    }
    std::size_t begin = findings.size();
    while (begin > 0 && namesChildBehind(findings[begin - 1], names, lastMatched))
        --begin;
    return begin;
}

// The element that a rule's finding speaks of, and its value where it has one.
std::string elementOf(const Finding& finding) {
    std::string text = finding.segmentId;
    if (finding.elementPosition != 0) text += " element " + std::to_string(finding.elementPosition);
    if (finding.subElement != "00") text += " component " + finding.subElement;
    if (!finding.loopId.empty()) text += ", loop " + finding.loopId;
    if (!finding.elementText.empty()) text += ": \"" + finding.elementText + "\"";
    return text.empty() ? "" : " (" + text + ")";
}

bool isPlacedBefore(const Explanation& first, const Explanation& second) {
    return first.record != 0 && (second.record == 0 || first.record < second.record);
}

}  // namespace

std::vector<Explanation> explain(const std::vector<Finding>& findings, const Grammar& grammar,
                                 const std::vector<Record>& records) {
    std::vector<Explanation> explanations;
    const std::size_t closing = beginOfClosingCheck(findings, grammar, records);
    for (std::size_t i = 0; i < findings.size(); ++i) {
        const Finding& finding = findings[i];
        const std::size_t place = placeOf(finding.number, records.size());
        if (i >= closing) {
            explanations.push_back({records.size() + 1, finding.code, "missing at the end: " + finding.segmentId});
        } else if (i + 1 < closing && tellOfOneIdentifier(finding, findings[i + 1])) {
            explanations.push_back({place, "8 and 7", unknownIdentifier(finding, findings[i + 1])});
            ++i;
        } else {
            explanations.push_back({place, finding.code, meaning(finding)});
        }
    }
    return explanations;
}

std::vector<Explanation> explainRules(const std::vector<Finding>& findings, const std::vector<LocatedRecord>& located) {
    std::vector<Explanation> explanations;
    for (std::size_t i = 0; i < findings.size(); ++i) {
        const Finding& finding = findings[i];
        Explanation explanation{recordOfLine(finding.number, located), finding.code,
                                finding.errorText + elementOf(finding), true};
        if (i + 1 < findings.size() && findings[i + 1].errorText == kContextText) {
            const Finding& context = findings[++i];
            explanation.context = Context{recordOfLine(context.number, located), elementOf(context)};
        }
        explanations.push_back(explanation);
    }
    std::stable_sort(explanations.begin(), explanations.end(), isPlacedBefore);
    return explanations;
}

std::size_t recordOfLine(long long line, const std::vector<LocatedRecord>& located) {
    const bool exists = line >= 1 && static_cast<unsigned long long>(line) <= located.size();
    return exists ? located[static_cast<std::size_t>(line) - 1].number : 0;
}

}  // namespace edicheck
