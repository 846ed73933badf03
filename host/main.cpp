// edicheck: checks interchange files and XML documents by means of libediexit. This file is its command line.
#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>
#include <map>

#include "commands.h"

namespace {

using edicheck::Format;
using edicheck::Options;

constexpr const char* kFooter = R"(
MESSAGE is an X12 file (ISA to IEA) or an EDIFACT file (UNA or UNB to UNZ), with any number of interchanges and
transactions, or with --stream the data stream of one message as a host delivers it.

GRAMMAR is the grammar text as the library takes it, line breaks behind '$' welcome. Lines that begin with '#' are
comments.

RULES is a file of rule records as the library takes them, a record a line or several. Lines that begin with '#' are
comments. A finding of a rule stands at its segment, with the rule's code and message; the other side of the rule is the
context below it. When the rules find nothing, the values that they took out of the message are shown as a table.

The identifier of a segment, by which a grammar tells like loops apart, is the 3rd element of HL and the 1st of every
other segment (of a composite the first component), unless --identifier says otherwise. Only four characters of it
travel: longer values are compared by their first four, and a grammar has to name those.

A segment id that cannot travel (blank, of more than three characters, or with other bytes than printable ASCII) is
delivered as '?'. A transaction without its trailer, or an interchange without its end, is checked up to where it ends
and is told on standard error.

A finding stands at the segment at which the library noticed it, which for something missing is the one behind the gap.
With --show, a segment that the grammar did not place has '------' where its loop would stand.

Exit code: 0 no findings; 1 findings, or a damaged envelope; 2 wrong usage, or something that could not be checked.)";

constexpr const char* kXmlFooter = R"(
A finding is one line, FILE:LINE:COLUMN: LEVEL: MESSAGE, with the levels fatal error, error and warning. Words and places
are the parser's. One that was made in a schema has its place in the schema, and FILE is the document that named it. One
without a place, as where a schema is not found, has neither line nor column.

Schemas, document types and entities are opened as the documents name them. Relative paths count from the folder of the
document: the tool works in that folder while it validates it.

A document that names no schema and has no document type has nothing declared, which is an error for each of its elements;
--well-formed is for such documents.

Documents in UTF-16 and UTF-32 cannot be handed to the library, which takes a text to end at its first NUL: they are told
on standard error and have to be converted first.

Exit code: 0 no findings; 1 findings, warnings included; 2 wrong usage, or something that could not be checked.)";

void addLibraryOption(CLI::App& command, Options& options) {
    command.add_option("--library", options.library, "Library to load (libediexit.so.1), as dlopen takes it")
        ->type_name("PATH");
}

void addCommonOptions(CLI::App& command, Options& options) {
    command.add_option("--grammar", options.grammar, "Grammar file")->required()->type_name("GRAMMAR");
    command.add_option("MESSAGE", options.files, "Files to read")->required()->type_name("");
    command.add_option("--identifier", options.identifiers, "Which element is the identifier, by segment: NM1=1,REF=2")
        ->type_name("LIST");
    auto* stream = command.add_flag("--stream", options.rawStream, "The files are data streams, not interchanges");
    command
        .add_option(
            "--delimiters", options.delimiters,
            "Delimiter text of a stream of kind 2 (*:~X): element and sub-element delimiter, terminator, X; \\n "
            "\\r \\t \\\\ \\xNN are understood")
        ->type_name("TEXT")
        ->needs(stream);
    addLibraryOption(command, options);
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app("Checks EDI messages against a grammar, and XML documents against their schemas.", "edicheck");
    app.require_subcommand(1);
    app.footer(kFooter);
    Options options;
    edicheck::ExitCode exitCode = edicheck::kFailed;

    auto* check = app.add_subcommand("check", "Check messages, and say in words what is wrong with them");
    addCommonOptions(*check, options);
    check->add_option("--rules", options.rules, "Rules to run over the message; needs a grammar of kind 2")
        ->type_name("RULES");
    bool show = false;
    const std::map<std::string, Format> formats = {{"words", Format::Words}, {"report", Format::Report}};
    auto* format =
        check->add_option("--format", options.format, "words, or report: the library's replies as they stand")
            ->transform(CLI::CheckedTransformer(formats).description(""))
            ->type_name("words|report");
    check->add_flag("--show", show, "Print the whole message, indented by loop, each finding at its segment")
        ->excludes(format);
    check->callback([&] {
        if (show) options.format = Format::Show;
        exitCode = edicheck::check(options);
    });

    auto* loops = app.add_subcommand("loops", "Print the segments that the grammar placed, each with its loop");
    addCommonOptions(*loops, options);
    loops->callback([&] { exitCode = edicheck::loops(options); });

    auto* xml = app.add_subcommand("xml", "Validate XML documents against the schemas that they name");
    xml->add_option("FILE", options.files, "Documents to validate")->required()->type_name("");
    xml->add_flag("--well-formed", options.wellFormed, "Ask for well-formedness alone: leave out the level error");
    addLibraryOption(*xml, options);
    xml->footer(kXmlFooter);
    xml->callback([&] { exitCode = edicheck::xml(options); });

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? edicheck::kClean : edicheck::kFailed;
    } catch (const std::exception& error) {
        std::cout.flush();
        std::cerr << "edicheck: " << error.what() << '\n';
        return edicheck::kFailed;
    }
    if (!std::cout.flush()) {
        std::cerr << "edicheck: standard output cannot be written\n";
        return edicheck::kFailed;
    }
    return exitCode;
}
