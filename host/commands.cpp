// The commands: from files to printed findings.
#include "commands.h"

#include <functional>
#include <iostream>
#include <set>
#include <string_view>

#include "checker.h"
#include "failure.h"
#include "files.h"
#include "grammar.h"
#include "interchange.h"
#include "print.h"
#include "rules.h"
#include "stream.h"

namespace edicheck {

namespace {

struct Totals {
    std::size_t transactions = 0;
    std::size_t findings = 0;
    std::size_t values = 0;
    std::size_t notes = 0;
    std::size_t failedFiles = 0;

    ExitCode exitCode() const {
        if (failedFiles > 0) return kFailed;
        return findings + notes > 0 ? kFindings : kClean;
    }
};

// How much was found in one message.
struct Counts {
    std::size_t findings = 0;
    std::size_t values = 0;  // that rules took out of it
};

// Prints one message under its title.
using PrintMessage = std::function<Counts(const std::string& title, const Delivery& delivery)>;

std::string atLine(const Note& note) {
    return "line " + std::to_string(note.line) + ": " + shown(note.text);
}

// What `read` makes of a file's text. A Failure names the file.
template <class Read>
auto readWhole(const std::string& path, Read read) {
    try {
        return read(readFile(path));
    } catch (const Failure& failure) {
        throw Failure(path + ": " + failure.what());
    }
}

std::string rulesOf(const std::string& path) {
    if (path.empty()) return "";
    const auto rules = readWhole(path, [](const std::string& text) { return RuleFile(text); });
    for (const Note& warning : rules.warnings())
        tell(path, atLine(warning));
    return rules.text();
}

Checker makeChecker(const Options& options) {
    const std::string& path = options.grammar;
    Grammar grammar = readWhole(path, [](const std::string& text) { return Grammar(text); });
    if (const auto line = grammar.unendedLine()) {
        tell(path, atLine({*line, "warning: what begins here is not ended by '$' and is no record of the grammar"}));
    }
    return Checker(options.library, path, std::move(grammar), rulesOf(options.rules));
}

std::string titleOf(const std::string& path, const Transaction& transaction) {
    return path + ": transaction " + shown(transaction.type + " " + transaction.control) + " (line " +
           std::to_string(transaction.segments.front().line) + ", " + counted(transaction.segments.size(), "segment") +
           ")";
}

// Takes the messages out of the files, one after the other, and hands them on.
class FileReader {
public:
    FileReader(const Options& options, int kind)
        : options_(options),
          kind_(kind),
          identifiers_(options.identifiers),
          delimiters_(parseDelimiters(options.delimiters)) {}

    // What is wrong with a file is told on standard error, and the next file is taken.
    Totals read(const PrintMessage& print) {
        for (const std::string& path : options_.files) {
            try {
                const std::string text = readFile(path);
                if (options_.rawStream) {
                    readStream(path, text, print);
                } else {
                    readInterchange(path, text, print);
                }
            } catch (const Failure& failure) {
                tell(path, failure.what());
                ++totals_.failedFiles;
            }
        }
        return totals_;
    }

private:
    void readStream(const std::string& path, const std::string& text, const PrintMessage& print) {
        const Delivery delivery = deliverStream(text, kind_, delimiters_);
        if (delivery.records.empty()) {
            throw Failure(kind_ == 1 ? "holds no record that is ended by '$'"
                                     : "holds no record that is ended by the terminator; --delimiters tells it");
        }
        if (delivery.unendedLine)
            note(path, {*delivery.unendedLine, "the last record is not ended, and is not looked at"});
        printOne(path + ": stream (" + counted(delivery.records.size(), "segment") + ")", delivery, print);
    }

    void readInterchange(const std::string& path, const std::string& text, const PrintMessage& print) {
        const InterchangeFile file = readInterchanges(text);
        for (const Note& found : file.notes)
            note(path, found);
        for (const Transaction& transaction : file.transactions) {
            printOne(titleOf(path, transaction), deliverTransaction(transaction, kind_, identifiers_), print);
        }
        if (file.error) throw Failure(atLine(*file.error) + hint(file));
        if (file.transactions.empty()) throw Failure("the interchange holds no transaction");
    }

    static std::string hint(const InterchangeFile& file) {
        return file.transactions.empty() ? "; a data stream as a host delivers it is checked with --stream"
                                         : "; the rest of the file is not checked";
    }

    void printOne(const std::string& title, const Delivery& delivery, const PrintMessage& print) {
        ++totals_.transactions;
        const Counts counts = print(title, delivery);
        totals_.findings += counts.findings;
        totals_.values += counts.values;
    }

    void note(const std::string& path, const Note& found) {
        tell(path, atLine(found));
        ++totals_.notes;
    }

    const Options& options_;
    int kind_;
    IdentifierElements identifiers_;
    std::string delimiters_;
    Totals totals_;
};

std::string withCounts(const std::string& title, const Counts& counts) {
    return title + ": " + (counts.findings == 0 ? "no findings" : counted(counts.findings, "finding")) +
           (counts.values == 0 ? "" : ", " + counted(counts.values, "value"));
}

template <class Line>
void printLines(const std::vector<Line>& lines) {
    for (const Line& line : lines)
        std::cout << line.line << '\n';
}

Counts printReport(const Checker& checker, const Delivery& delivery) {
    const Verdict verdict = checker.check(delivery);
    printLines(verdict.findings);
    printLines(verdict.ruleFindings);
    printLines(verdict.contents);
    return {verdict.findings.size() + verdict.ruleFindings.size(), verdict.contents.size()};
}

Counts printWords(const Checker& checker, const std::string& title, const Delivery& delivery, Format format) {
    const Verdict verdict = checker.check(delivery);
    std::vector<LocatedRecord> located;
    if (format == Format::Show || verdict.hasRuleResults()) located = checker.locate(delivery);
    auto explanations = explain(verdict.findings, checker.grammar(), delivery.records);
    const auto ofRules = explainRules(verdict.ruleFindings, located);
    explanations.insert(explanations.end(), ofRules.begin(), ofRules.end());

    const Counts counts = {explanations.size(), verdict.contents.size()};
    std::cout << withCounts(title, counts) << '\n';
    if (format == Format::Show) {
        printMessage(std::cout, delivery.records, explanations, located, checker.grammar());
    } else {
        printFindings(std::cout, delivery.records, explanations);
    }
    if (!verdict.contents.empty()) printContents(std::cout, verdict.contents, located);
    return counts;
}

Counts printLoops(const Checker& checker, const std::string& title, const Delivery& delivery) {
    const Verdict verdict = checker.check(delivery);
    const Counts counts = {explain(verdict.findings, checker.grammar(), delivery.records).size()};
    const std::vector<LocatedRecord> located = checker.locate(delivery);
    std::set<std::size_t> distinct;
    for (const LocatedRecord& place : located)
        distinct.insert(place.number);
    std::cout << withCounts(title, counts) << ", " << distinct.size() << " located\n";
    printLocated(std::cout, delivery.records, located);
    return counts;
}

void printSummary(const Options& options, const Totals& totals) {
    std::cout << '\n'
              << counted(options.files.size(), "file") << ", " << counted(totals.transactions, "transaction") << ", "
              << counted(totals.findings, "finding");
    if (totals.values > 0) std::cout << ", " << counted(totals.values, "value");
    if (totals.notes > 0) std::cout << ", " << counted(totals.notes, "note") << " on standard error";
    if (totals.failedFiles > 0) std::cout << ", " << counted(totals.failedFiles, "file") << " not checked to the end";
    std::cout << '\n';
}

}  // namespace

ExitCode check(const Options& options) {
    const Checker checker = makeChecker(options);
    if (!options.rules.empty()) checker.requireRules();
    if (options.format == Format::Show) checker.requireLocating();
    FileReader reader(options, checker.grammar().kind());
    const Totals totals = reader.read([&](const std::string& title, const Delivery& delivery) {
        return options.format == Format::Report ? printReport(checker, delivery)
                                                : printWords(checker, title, delivery, options.format);
    });
    if (options.format != Format::Report) printSummary(options, totals);
    return totals.exitCode();
}

ExitCode loops(const Options& options) {
    const Checker checker = makeChecker(options);
    checker.requireLocating();
    FileReader reader(options, checker.grammar().kind());
    const Totals totals = reader.read(
        [&](const std::string& title, const Delivery& delivery) { return printLoops(checker, title, delivery); });
    return totals.exitCode();
}

}  // namespace edicheck
