// TreeWalk: from short notation to a tree and a message, and back.
#include "treewalk.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "common/text.h"
#include "grammar/grammarbuilder.h"

namespace {

std::string shownFinding(ErrorInfo const& record) {
    std::string const about =
        fieldText(record.segmentId) + " " + fieldText(record.errorCode) + "@" + fieldText(record.loopId);
    std::string const fixed = fieldText(record.txnText) + "|" + fieldText(record.segText) + "|" +
                              fieldText(record.errorText) + "|" + fieldText(record.elementText) + "|" +
                              fieldText(record.subElementText);
    std::string const number = std::to_string(record.lineNumber);
    if (record.elementPosition == 0 && fixed == "NONE|SEG|ERROR|Element Text|00") return number + " " + about;
    return number + "." + std::to_string(record.elementPosition) + " " + about + "|" + fixed;
}

std::string shownLine(SegListInfo const& line) {
    std::string const identifier = fieldText(line.identifier);
    return fieldText(line.segmentId) + (identifier.empty() ? "" : "/" + identifier) + "@" + fieldText(line.loopId);
}

}  // namespace

Texts notation(ErrorInfos const& errors) {
    Texts shown;
    for (int index = 0; index < errors.count; ++index)
        shown.push_back(shownFinding(errors.records.data[index]));
    return shown;
}

Texts notation(SegLists const& lines) {
    Texts shown;
    for (int index = 0; index < lines.count; ++index)
        shown.push_back(shownLine(lines.data[index]));
    return shown;
}

TreeWalk::TreeWalk(std::string grammar, Texts const& records)
    : root(grammarKindOf(grammar.c_str()), new ErrorInfos,
           grammarKindOf(grammar.c_str()) == 2 ? new SegLists : nullptr),
      data(*(root.dataSegment = new DataSegment)) {
    if (root.grammarKind == 2) {
        root.identifierBuffer = new IdentifierBuffer;
        root.segLists->elementDelimiter = '*';
    }
    if (!buildGrammar(root, grammar.data(), grammar.size())) throw std::invalid_argument("bad grammar: " + grammar);
    for (std::string const& record : records)
        addRecord(record);
}

void TreeWalk::run() {
    root.validateStructure(&data, nullptr, nullptr, nullptr, root.grammarKind, root.identifierBuffer);
}

Validator& TreeWalk::find(std::vector<int> const& path) {
    Validator* node = &root;
    for (int index : path)
        node = dynamic_cast<ValidationContext&>(*node).children.data[index];
    return *node;
}

void TreeWalk::addRecord(std::string const& record) {
    std::size_t const slash = record.find('/');
    std::string const id = record.substr(0, slash);
    SegmentData& entry = data.segments[data.recordCount];
    copyText(entry.segmentId, id.c_str(), segmentIdLength);
    entry.position = data.recordCount++;
    if (root.grammarKind != 2) return;
    if (slash != std::string::npos) {
        entry.identifierOffsets[0] = root.identifierBuffer->add(record.substr(slash + 1).c_str());
    }
    entry.text = texts.emplace_back(id + "*" + std::to_string(data.recordCount)).data();
}

void expectWalk(std::string const& grammar, Texts const& records, Texts const& findings, Texts const& lines) {
    TreeWalk walk(grammar, records);
    walk.run();
    std::string message;
    for (std::string const& record : records)
        message += " " + record;
    EXPECT_EQ(walk.findings(), findings) << "walk of" << message;
    EXPECT_EQ(walk.lines(), lines) << "walk of" << message;
}
