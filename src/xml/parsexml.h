// ParseXML: validates an XML document against its schema, and hands back every message of the parser.
//
// The document is read from memory. The parser opens what the document names: schemas, external entities and the
// document type, relative to the current folder.
//
// Threads: calls on separate documents may run side by side.
#pragma once

/// Parses the NUL-terminated `xml`. Stores the messages in `result`: a text that belongs to the caller, who releases it
/// with free, with one more NUL behind its terminator. The three switches say which levels are reported. Stores the
/// size of the text's buffer in `length`. Answers 0, or -1 where the parser gave up with an exception: `result` is then
/// its message, and `length` is not set. Throws szFailure where there is no memory.
int ParseXML(char* xml, char** result, int reportFatalErrors, int reportErrors, int reportWarnings,
             unsigned long* length);
