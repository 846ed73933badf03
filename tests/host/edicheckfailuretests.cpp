// edicheck as a person runs it: everything that ends with exit code 2, and files that are damaged.
#include <gmock/gmock.h>

#include <filesystem>

#include "samples.h"
#include "toolrun.h"

namespace edicheck {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class Usage : public ToolTest {};
class Failures : public ToolTest {};
class Damage : public ToolTest {};

TEST_F(Usage, isToldWhenAskedFor) {
    const auto result = runBare({"--help"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.out, HasSubstr("check"));
    EXPECT_THAT(result.out, HasSubstr("loops"));
    EXPECT_THAT(runBare({"check", "--help"}).out, HasSubstr("compared by their first four"));
}

TEST_F(Usage, ofTheWrongKindFails) {
    const std::string grammar = file("grammar", kOrderGrammar);
    const std::string message = file("message", x12(kOrder));
    const std::vector<std::vector<std::string>> wrong = {
        {},
        {"validate"},
        {"check"},
        {"check", message},
        {"check", "--grammar", grammar},
        {"check", "--grammar"},
        {"check", "--grammar", grammar, message, "--format", "prose"},
        {"check", "--grammar", grammar, message, "--unknown"},
        {"check", "--grammar", grammar, message, "--delimiters", "*:~X"},
        {"check", "--grammar", grammar, message, "--show", "--format", "report"},
        {"loops", "--grammar", grammar, message, "--format", "report"},
    };
    for (const auto& arguments : wrong) {
        const auto result = runBare(arguments);
        EXPECT_EQ(result.exitCode, 2) << testing::PrintToString(arguments);
        EXPECT_EQ(result.out, "") << testing::PrintToString(arguments);
        EXPECT_NE(result.err, "") << testing::PrintToString(arguments);
    }
}

TEST_F(Usage, namesTheOptionThatCannotBeUnderstood) {
    const auto identifier = check(kOrderGrammar, x12(kOrder), {"--identifier", "N1"});
    EXPECT_EQ(identifier.exitCode, 2);
    EXPECT_THAT(identifier.err, StartsWith("edicheck: --identifier: \"N1\""));
    const auto delimiters = check(kOrderGrammar, x12(kOrder), {"--stream", "--delimiters", "*:"});
    EXPECT_EQ(delimiters.exitCode, 2);
    EXPECT_THAT(delimiters.err, StartsWith("edicheck: --delimiters: "));
}

TEST_F(Failures, tellAFileThatCannotBeRead) {
    const std::string grammar = file("grammar", kOrderGrammar);
    std::filesystem::create_directory(path("folder"));
    const auto missing = run({"check", "--grammar", grammar, path("absent")});
    EXPECT_EQ(missing.exitCode, 2);
    EXPECT_THAT(missing.err, StartsWith("edicheck: " + path("absent") + ": cannot be opened: "));
    const auto folder = run({"check", "--grammar", grammar, path("folder")});
    EXPECT_EQ(folder.exitCode, 2);
    EXPECT_THAT(folder.err, HasSubstr("is a directory"));
    const auto empty = run({"check", "--grammar", grammar, file("empty", "")});
    EXPECT_EQ(empty.exitCode, 2);
    EXPECT_EQ(empty.err, "edicheck: " + path("empty") + ": is empty\n");
}

TEST_F(Failures, tellAGrammarThatCannotBeRead) {
    const std::string message = file("message", x12(kOrder));
    const auto missing = run({"check", "--grammar", path("absent"), message});
    EXPECT_EQ(missing.exitCode, 2);
    EXPECT_THAT(missing.err, StartsWith("edicheck: " + path("absent") + ": cannot be opened: "));
    const auto empty = run({"check", "--grammar", file("empty", ""), message});
    EXPECT_EQ(empty.exitCode, 2);
    EXPECT_EQ(empty.err, "edicheck: " + path("empty") + ": is empty\n");
}

TEST_F(Failures, tellAFileThatIsNoInterchange) {
    for (const std::string text : {"hello", "<xml/>", "ST 850  xxxxxxxST*850~", "ISAAC"}) {
        const auto result = check(kOrderGrammar, text);
        EXPECT_EQ(result.exitCode, 2) << text;
        EXPECT_THAT(result.err, HasSubstr("message: line 1: no interchange begins here"));
        EXPECT_THAT(result.err, HasSubstr("--stream"));
    }
}

TEST_F(Failures, tellAnInterchangeWithoutATransaction) {
    const auto result = check(kOrderGrammar, x12(""));
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "edicheck: " + path("message") + ": the interchange holds no transaction\n");
}

TEST_F(Failures, tellAnIsaOfWhichNoDelimitersCanBeTaken) {
    const auto result = check(kOrderGrammar, kIsa.substr(0, 80));
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_THAT(result.err, HasSubstr("line 1: the ISA segment does not tell the delimiters"));
}

TEST_F(Failures, tellAStreamWithoutARecord) {
    const auto kind1 = check(kOrderGrammarOfKind1, "ST BEG", {"--stream"});
    EXPECT_EQ(kind1.exitCode, 2);
    EXPECT_THAT(kind1.err, HasSubstr("holds no record that is ended by '$'"));
    const auto kind2 = check(kOrderGrammar, "ST 850  xxxxxxxST*850|", {"--stream"});
    EXPECT_EQ(kind2.exitCode, 2);
    EXPECT_THAT(kind2.err, HasSubstr("--delimiters"));
}

TEST_F(Failures, tellALibraryThatCannotBeLoaded) {
    const auto result = runBare({"check", "--grammar", file("grammar", kOrderGrammar), file("message", x12(kOrder)),
                                 "--library", path("absent.so")});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err, StartsWith("edicheck: the library cannot be loaded: "));
    EXPECT_THAT(result.err, HasSubstr("absent.so"));
}

TEST_F(Failures, tellALibraryThatLacksAnExport) {
    const std::string grammar = file("grammar", kOrderGrammar);
    const std::string message = file("message", x12(kOrder));
    const auto nothing = runBare({"check", "--grammar", grammar, message, "--library", FAKE_LIBRARY_NOTHING});
    EXPECT_EQ(nothing.exitCode, 2);
    EXPECT_THAT(nothing.err, HasSubstr("has no export DestroyStruct"));
    for (const std::vector<std::string>& command : {std::vector<std::string>{"loops"}, {"check", "--show"}}) {
        std::vector<std::string> arguments = command;
        arguments.insert(arguments.end(), {"--grammar", grammar, message, "--library", FAKE_LIBRARY_BADREPORT});
        const auto result = runBare(arguments);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_THAT(result.err, HasSubstr("has no export GetLoopText"));
    }
}

TEST_F(Failures, tellALibraryThatIsOutOfMemory) {
    const auto result = runBare({"check", "--grammar", file("grammar", kOrderGrammar), file("message", x12(kOrder)),
                                 "--library", FAKE_LIBRARY_OUTOFMEMORY});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "edicheck: CreateStruct ran out of memory (reply -99)\n");
}

TEST_F(Failures, tellAReportThatIsNone) {
    const auto result = runBare({"check", "--grammar", file("grammar", kOrderGrammar), file("message", x12(kOrder)),
                                 "--library", FAKE_LIBRARY_BADREPORT});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_THAT(result.err, HasSubstr("message: the library's report cannot be read"));
}

TEST_F(Failures, tellWhichRecordOfAGrammarLacksAField) {
    const auto result = check("# order\n2M|1|1|ST$\nM|1|1|BEG$\nM||1|N1$\nM|1|1|SE$\n", x12(kOrder));
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err,
                StartsWith("edicheck: " + path("grammar") +
                           ": line 4: the grammar is refused: record 3 \"M||1|N1\" has 3 fields and needs 4"));
}

TEST_F(Failures, warnOfGrammarTextThatIsNoRecord) {
    const auto result =
        check("2M|1|1|ST$\nM|1|1|BEG$\nO|0|2|REF$\nO|0|0|N1$\nM|1|1|SE$\nO|0|1|ZZZ\n", x12("ST*850*1~BEG*00~SE*3*1~"));
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err,
              "edicheck: " + path("grammar") +
                  ": line 6: warning: what begins here is not ended by '$' and is no record of the grammar\n");
}

TEST_F(Failures, tellThatAGrammarOfKind1LocatesNothing) {
    const std::string grammar = file("grammar", kOrderGrammarOfKind1);
    const std::string message = file("message", x12(kOrder));
    for (const std::vector<std::string>& command : {std::vector<std::string>{"loops"}, {"check", "--show"}}) {
        std::vector<std::string> arguments = command;
        arguments.insert(arguments.end(), {"--grammar", grammar, message});
        const auto result = run(arguments);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_THAT(result.err, HasSubstr("grammar: a grammar of kind 1 locates no segments"));
    }
}

TEST_F(Failures, winOverFindingsAndLeaveOtherFilesChecked) {
    const auto result = run({"check", "--grammar", file("grammar", kOrderGrammar), path("absent"),
                             file("faulty", x12("ST*850*1~BEG*00~SE*3*1~")), file("clean", x12(kOrder))});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_THAT(result.out, HasSubstr("faulty: transaction 850 1"));
    EXPECT_THAT(result.out, HasSubstr("clean: transaction 850 0001"));
    EXPECT_THAT(result.out, HasSubstr("\n3 files, 2 transactions, 1 finding, 1 file not checked to the end\n"));
}

// A cut before the last segment is told in every case, and what it leaves is checked.
TEST_F(Damage, isToldAtEveryCutOfAnX12File) {
    const std::string whole = x12("ST*850*1~BEG*00~N1*BY~SE*4*1~");
    const std::size_t complete = whole.find("IEA*1*") + 3;
    const std::size_t firstTransaction = whole.find("ST*850") + 2;
    for (std::size_t cut = 0; cut < whole.size(); ++cut) {
        const auto result = check(kOrderGrammar, whole.substr(0, cut));
        const int expected = cut >= complete ? 0 : cut < firstTransaction ? 2 : 1;
        EXPECT_EQ(result.exitCode, expected) << cut << result.err;
        EXPECT_EQ(result.err.empty(), expected == 0) << cut;
    }
}

TEST_F(Damage, isToldAtEveryCutOfAnEdifactFile) {
    const std::string whole = "UNA:+.? 'UNB+UNOA:1+A+B'UNH+1+ORDERS:D'BGM+220'FTX+it?'s'UNT+4+1'UNZ+1+1'";
    const std::size_t complete = whole.find("UNZ") + 3;
    const std::size_t firstTransaction = whole.find("UNH") + 3;
    for (std::size_t cut = 0; cut < whole.size(); ++cut) {
        const auto result = check(kEdifactGrammar, whole.substr(0, cut));
        const int expected = cut >= complete ? 0 : cut < firstTransaction ? 2 : 1;
        EXPECT_EQ(result.exitCode, expected) << cut << result.err;
        EXPECT_EQ(result.err.empty(), expected == 0) << cut;
    }
}

TEST_F(Damage, ofBinaryBytesIsCheckedOrRefused) {
    std::string everyByte;
    for (int byte = 0; byte < 256; ++byte)
        everyByte += static_cast<char>(byte);
    EXPECT_EQ(check(kOrderGrammar, everyByte).exitCode, 2);
    EXPECT_EQ(check(kOrderGrammar, "ISA" + everyByte).exitCode, 2);

    const auto held = check(kOrderGrammar, edifact("UNH+1+ORDERS'" + everyByte + "'UNT+1+1'"));
    EXPECT_EQ(held.exitCode, 1);  // its own delimiters cut it, and leave bytes free

    using namespace std::string_literals;
    const auto nul = check(kOrderGrammar, x12("ST*850*1~BEG*\0~\0\0\0*1~SE*4*1~"s));
    EXPECT_EQ(nul.exitCode, 1);
    EXPECT_THAT(nul.out, HasSubstr("  segment 3 (line 3): \\x00\\x00\\x00*1\n"));
}

TEST_F(Damage, ofARawStreamIsCheckedAtEveryCut) {
    const std::string whole = "ST 850  xxxxxxxST*850~BEG     xxxxxxxBEG*00~N1 BY   xxxxxxxN1*BY~SE 4    xxxxxxxSE*4~";
    for (std::size_t cut = 0; cut <= whole.size(); ++cut) {
        const auto result = check(kOrderGrammar, whole.substr(0, cut), {"--stream", "--show"});
        EXPECT_EQ(result.exitCode, cut == whole.size() ? 0 : cut <= whole.find('~') ? 2 : 1) << cut << result.err;
    }
}

TEST_F(Damage, ofShortRecordsInARawStreamIsShown) {
    const auto result = check(kOrderGrammar, "ST~BEG1~N~N1 B~SE 4    x~", {"--stream", "--show"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.out, HasSubstr("     1          ST\n"));
    EXPECT_THAT(result.out, HasSubstr("     3  ------  N\n"));
}

}  // namespace
}  // namespace edicheck
