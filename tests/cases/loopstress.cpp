/*
 * Random small grammars times random small messages: the library's report and its located segments are held against
 * those of the second implementation in walkmodel. The seed is fixed, so that each run makes the same trials. A
 * difference is cut down to the smallest trial that still shows it, and printed in the form of a case file.
 */
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "host.h"
#include "walkmodel.h"

namespace {

using walkmodel::Event;
using walkmodel::Grammar;
using walkmodel::Node;
using walkmodel::NodeType;
using walkmodel::Outcome;
using walkmodel::Record;
using Records = std::vector<Record>;

constexpr unsigned seed = 20240229;
constexpr int trialNumber = 30000;
constexpr int wantedOfEachEvent = 50;
constexpr size_t longestMessage = 40;
constexpr char elementDelimiter = '*';
const std::string terminator = "~";

struct Trial {
    Grammar grammar;
    Records records;
};

class Dice {
public:
    explicit Dice(unsigned start) : engine(start) {}

    int below(int limit) { return static_cast<int>(engine() % static_cast<unsigned>(limit)); }
    bool oneIn(int number) { return below(number) == 0; }

    template <typename T>
    T pick(const std::vector<T>& choices) {
        return choices[static_cast<size_t>(below(static_cast<int>(choices.size())))];
    }

private:
    std::mt19937 engine;  // the one part of <random> whose numbers are the same everywhere
};

/* ---- random grammars ---- */

class GrammarMaker {
public:
    explicit GrammarMaker(Dice& theDice) : dice(theDice) {}

    Grammar make() {
        Grammar grammar;
        grammar.kind = dice.oneIn(3) ? 1 : 2;
        nodesLeft = 2 + dice.below(14);
        while (nodesLeft > 0)
            grammar.nodes.push_back(node(0));
        if (dice.oneIn(200)) grammar.nodes.clear();
        const std::vector<std::string> versions = {"", "", "", "004010", "88 ", "D  ", "2003", "3060", "3061"};
        if (!grammar.nodes.empty()) grammar.version = dice.pick(versions);
        return grammar;
    }

private:
    Dice& dice;
    int nodesLeft = 0;

    Node node(int depth) {
        --nodesLeft;
        const int roll = dice.below(10);
        Node result;
        if (depth == 4 || roll < 5) {
            result.name = dice.pick(segmentNames);
        } else if (roll < 8) {
            result.type = NodeType::loop;
            result.name = dice.pick(loopNames);
            addChildren(result, depth, 4);
            if (!result.children.empty()) addIdentifiers(result.children[0]);
        } else {
            result.type = NodeType::group;
            result.name = dice.pick(groupNames);
            addChildren(result, depth, 3);
        }
        result.requirement = dice.pick(std::vector<char>{'M', 'O', 'C', 'M'});
        result.minRepeat = dice.pick(std::vector<int>{0, 0, 0, 1, 1, 2, 3});
        result.maxRepeat = dice.oneIn(25) ? -1 - dice.below(2) : dice.pick(std::vector<int>{0, 1, 1, 1, 2, 2, 3});
        return result;
    }

    void addChildren(Node& parent, int depth, int most) {
        if (dice.oneIn(40)) return;
        const int number = 1 + dice.below(most);
        for (int i = 0; i < number; ++i)
            parent.children.push_back(node(depth + 1));
    }

    void addIdentifiers(Node& initiator) {
        if (dice.oneIn(2)) return;
        for (int number = 1 + dice.below(3); number > 0; --number)
            initiator.identifiers.push_back(dice.pick(identifiers));
        if (!dice.oneIn(20)) return;
        const int moreThanCount = 22;
        for (int number = 1; number <= moreThanCount; ++number)
            initiator.identifiers.push_back("N" + std::to_string(number));
    }

    const std::vector<std::string> segmentNames = {"A",  "A",   "B",  "B",   "C",   "HL",
                                                   "HL", "NM1", "SE", "UNT", "NTE", "LONG"};
    const std::vector<std::string> loopNames = {"Loop 1000A", "Loop 2000",    "Loop 2010BA",
                                                "Loop 7",     "Loop AB12345", "Loop",
                                                "Loop ",      "Loop_X",       "Loop 12345678901234567890"};
    const std::vector<std::string> groupNames = {
        "UnorderedGroup",         "UnorderedGroup 2310",   "UnorderedGroup G17x", "UnorderedGroup ABC",
        "UnorderedGroupX",        "UnorderedGroup_Loop 5", "UnorderedGroup Loop", "UnorderedGroup UnorderedGroup 5",
        "UnorderedGroup 12345678"};
    const std::vector<std::string> identifiers = {"1", "20", "22", "2000", "LONGER"};
};

std::string grammarRecord(const Node& node, const std::string& version) {
    std::string text = version + node.requirement + "|" + std::to_string(node.minRepeat) + "|" +
                       std::to_string(static_cast<uint32_t>(node.maxRepeat)) + "|" + node.name;
    for (const std::string& identifier : node.identifiers)
        text += "|" + identifier;
    text += "$\n";
    for (const Node& child : node.children)
        text += grammarRecord(child, "");
    if (node.type == NodeType::loop) text += "O|0|0|EndLoop$\n";
    if (node.type == NodeType::group) text += "O|0|0|EndUnorderedGroup$\n";
    return text;
}

std::string grammarText(const Grammar& grammar) {
    std::string text = std::to_string(grammar.kind);
    for (size_t i = 0; i < grammar.nodes.size(); ++i)
        text += grammarRecord(grammar.nodes[i], i == 0 ? grammar.version : "");
    return text;
}

/* ---- random messages ---- */

/* Makes messages that follow a grammar most of the way, so that the walk gets deep into it, and then spoils them. */
class MessageMaker {
public:
    MessageMaker(Dice& theDice, const Grammar& theGrammar) : dice(theDice), grammar(theGrammar) {}

    Records make() {
        for (const Node& node : grammar.nodes)
            addRepeats(node);
        for (int spoils = dice.below(5); spoils > 0; --spoils)
            spoil();
        // Only the first record of a stream can have a blank id: further on, blanks between records are skipped.
        if (!records.empty() && dice.oneIn(60)) records[0].id = "";
        for (size_t i = 0; i < records.size(); ++i)
            records[i].text = records[i].id + (dice.oneIn(15) ? "" : elementDelimiter + std::to_string(i + 1) + "*X");
        return std::move(records);
    }

private:
    Dice& dice;
    const Grammar& grammar;
    Records records;

    void add(const std::string& id, const std::string& identifier) {
        if (records.size() < longestMessage) records.push_back({id.substr(0, 3), identifier, ""});
    }

    std::string someIdentifier() { return dice.pick(std::vector<std::string>{"", "", "1", "20", "22", "99", "A$B"}); }

    void addRepeats(const Node& node) {
        const int least = node.requirement == 'M' ? 1 : 0;
        for (int times = least + dice.below(3); times > 0; --times)
            addOnce(node);
    }

    void addOnce(const Node& node) {
        if (node.type == NodeType::segment) return add(node.name, someIdentifier());
        if (node.children.empty()) return;
        if (node.type == NodeType::loop) {
            addInitiator(node.children[0]);
            for (size_t i = 1; i < node.children.size(); ++i)
                addRepeats(node.children[i]);
        } else {
            for (int times = dice.below(5); times > 0; --times)
                addOnce(dice.pick(node.children));
        }
    }

    /* The record at which a loop begins whose first child this is. */
    void addInitiator(const Node& first) {
        const Node* named = &first;
        while (named->type != NodeType::segment && !named->children.empty())
            named = &named->children[0];
        const bool isKnown = !first.identifiers.empty() && !dice.oneIn(4);
        add(named->name, isKnown ? dice.pick(first.identifiers).substr(0, 4) : someIdentifier());
    }

    void spoil() {
        const size_t place = static_cast<size_t>(dice.below(static_cast<int>(records.size()) + 1));
        const auto at = records.begin() + static_cast<std::ptrdiff_t>(place);
        const std::vector<std::string> ids = {"A", "B", "C", "HL", "NM1", "SE", "UNT", "NTE", "NTE", "ZZ", "LON"};
        if (records.empty() || dice.oneIn(3)) {
            records.insert(at, {dice.pick(ids), someIdentifier(), ""});
        } else if (at == records.end()) {
            records.resize(static_cast<size_t>(dice.below(static_cast<int>(records.size()))));
        } else if (dice.oneIn(3)) {
            records.erase(at);
        } else if (dice.oneIn(2)) {
            at->identifier = someIdentifier();
        } else if (dice.oneIn(2)) {
            std::swap(*at, records.front());
        } else {
            records.insert(at, *at);
        }
    }
};

std::string padded(const std::string& text, size_t width) {
    return text + std::string(width - text.size(), ' ');
}

std::string streamText(const Trial& trial) {
    std::string stream;
    for (const Record& record : trial.records) {
        stream += padded(record.id, 3);
        stream +=
            trial.grammar.kind == 1 ? "x*y$" : padded(record.identifier, 5) + "unread " + record.text + terminator;
    }
    return stream;
}

/* ---- the comparison ---- */

Outcome answerOfLibrary(const cases::Host& host, const Trial& trial) {
    const std::string handle = host.call("CreateStruct", grammarText(trial.grammar)).reply;
    if (trial.grammar.kind == 2) host.call("SetDelimiters", handle + elementDelimiter + ':' + terminator + 'X');
    Outcome outcome;
    outcome.report = host.call("ValidateStruct", handle + streamText(trial)).reply;
    if (trial.grammar.kind == 2) outcome.loopText = host.call("GetLoopText", handle).reply;
    host.call("DestroyStruct", handle);
    return outcome;
}

Outcome answerOfModel(const Trial& trial) {
    return walkmodel::walk(trial.grammar, trial.records, elementDelimiter, terminator);
}

bool differs(const cases::Host& host, const Trial& trial) {
    const Outcome found = answerOfLibrary(host, trial);
    const Outcome expected = answerOfModel(trial);
    return found.report != expected.report || found.loopText != expected.loopText;
}

/* The lists that lack one node, at whatever depth. */
std::vector<std::vector<Node>> smallerLists(const std::vector<Node>& nodes) {
    std::vector<std::vector<Node>> smaller;
    for (size_t i = 0; i < nodes.size(); ++i) {
        smaller.push_back(nodes);
        smaller.back().erase(smaller.back().begin() + static_cast<std::ptrdiff_t>(i));
        for (const std::vector<Node>& children : smallerLists(nodes[i].children)) {
            smaller.push_back(nodes);
            smaller.back()[i].children = children;
        }
    }
    return smaller;
}

std::vector<Trial> smallerTrials(const Trial& trial) {
    std::vector<Trial> smaller;
    for (size_t i = 0; i < trial.records.size(); ++i) {
        smaller.push_back(trial);
        smaller.back().records.erase(smaller.back().records.begin() + static_cast<std::ptrdiff_t>(i));
    }
    for (const std::vector<Node>& nodes : smallerLists(trial.grammar.nodes)) {
        if (nodes.empty()) continue;
        smaller.push_back(trial);
        smaller.back().grammar.nodes = nodes;
    }
    return smaller;
}

Trial smallest(const cases::Host& host, Trial trial) {
    for (bool shrunk = true; shrunk;) {
        shrunk = false;
        for (const Trial& smaller : smallerTrials(trial)) {
            if (!differs(host, smaller)) continue;
            trial = smaller;
            shrunk = true;
            break;
        }
    }
    return trial;
}

std::string describe(const cases::Host& host, const Trial& trial) {
    std::string text = "[grammar]\n" + grammarText(trial.grammar) + "\n[message]\n";
    for (const Record& record : trial.records) {
        text += (record.identifier.empty() ? "" : "<" + record.identifier + "> ") + record.text + "\n";
    }
    const auto lines = [](std::string reply) {
        for (size_t at = 0; (at = reply.find_first_of("$~", at)) != std::string::npos; ++at)
            reply[at] = '\n';
        return reply;
    };
    const Outcome found = answerOfLibrary(host, trial);
    const Outcome expected = answerOfModel(trial);
    return text + "\nreport of the model:\n" + lines(expected.report) + "report of the library:\n" +
           lines(found.report) + "located by the model:\n" + lines(expected.loopText) + "located by the library:\n" +
           lines(found.loopText);
}

TEST(LoopStress, theLibraryAnswersLikeTheModelOnRandomGrammarsAndMessages) {
    const cases::Host host(cases::openLibrary());
    Dice dice(seed);
    Outcome sum;
    for (int i = 0; i < trialNumber; ++i) {
        Trial trial{GrammarMaker(dice).make(), {}};
        trial.records = MessageMaker(dice, trial.grammar).make();
        ASSERT_FALSE(differs(host, trial)) << "trial " << i << ", cut down:\n" << describe(host, smallest(host, trial));
        const Outcome outcome = answerOfModel(trial);
        for (size_t event = 0; event < sum.events.size(); ++event)
            sum.events[event] += outcome.events[event];
    }
    for (size_t event = 0; event < sum.events.size(); ++event)
        EXPECT_GE(sum.events[event], wantedOfEachEvent) << "the trials hardly reach event " << event;
}

}  // namespace
