// Makes seeds for the fuzz targets: makeseeds TARGET-FOLDER CASES EXAMPLES. Each case file gives its grammar, its
// streams and its rule records; each example file is a seed as it stands.
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include "casefile.h"
#include "hostinput.h"
#include "parts.h"

namespace {

using std::filesystem::path;

class SeedWriter {
public:
    explicit SeedWriter(path folder) : root(std::move(folder)) {
        std::filesystem::remove_all(root);
        for (char const* target : {"grammar", "walk", "rules", "road", "xml", "interchange"})
            std::filesystem::create_directories(root / target);
    }

    void write(char const* target, std::string const& seed) {
        std::ofstream(root / target / std::to_string(++count), std::ios::binary) << seed;
    }

    int written() const { return count; }

private:
    path root;
    int count = 0;
};

std::string textOf(path const& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// Goes through a case's sections as its runner does, and keeps what a host would hand over.
class CaseSeeds {
public:
    CaseSeeds(cases::CaseFile const& caseFile, SeedWriter& seedWriter) : writer(seedWriter) {
        for (auto const& section : caseFile.sections)
            take(section);
    }

private:
    SeedWriter& writer;
    std::string grammar;
    std::string delimiters = "*:~X";
    std::string stream;

    void take(cases::Section const& section) {
        if (section.name == "grammar") {
            grammar = cases::joined(section, "\n");
            writer.write("grammar", grammar);
        } else if (section.name == "delimiters") {
            delimiters = cases::joined(section, "");
        } else if (section.name == "message" || section.name == "stream") {
            stream = streamOf(section);
            writer.write("walk", parts(""));
        } else if (section.name == "rules" || section.name == "rule") {
            std::string const records =
                section.name == "rule" ? cases::ruleRecords(section) : cases::joined(section, "");
            writer.write("rules", records);
            writer.write("road", parts(records));
        } else if (section.name == "xml") {
            writer.write("xml", cases::joined(section, "\n"));
        }
    }

    std::string streamOf(cases::Section const& section) const {
        if (section.name == "stream") return cases::joined(section, "");
        if (!grammar.empty() && grammar[0] == '1') return cases::streamOfKind1(section);
        return cases::streamOfKind2(section, cases::readDelimiters(delimiters));
    }

    std::string parts(std::string const& records) const {
        std::string text = grammar + fuzz::separator + delimiters + fuzz::separator + stream;
        if (!records.empty()) text += fuzz::separator + records;
        return text;
    }
};

void takeExample(path const& file, SeedWriter& writer) {
    std::string const extension = file.extension();
    if (file.filename() == "grammar.txt") writer.write("grammar", textOf(file));
    if (extension == ".x12" || extension == ".edi") writer.write("interchange", textOf(file));
    if (extension == ".xml") writer.write("xml", "000" + textOf(file));
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::cerr << "usage: makeseeds TARGET-FOLDER CASES EXAMPLES\n";
        return 2;
    }
    SeedWriter writer(argv[1]);
    for (auto const& entry : std::filesystem::recursive_directory_iterator(argv[2])) {
        if (entry.path().extension() != ".case") continue;
        try {
            CaseSeeds(cases::readCase(entry.path()), writer);
        } catch (cases::CaseError const&) {
            // A case that turns from object to object: what it gave up to here is enough.
        }
    }
    for (auto const& entry : std::filesystem::recursive_directory_iterator(argv[3]))
        if (entry.is_regular_file()) takeExample(entry.path(), writer);
    std::cout << writer.written() << " seeds\n";
    return writer.written() > 0 ? 0 : 1;
}
