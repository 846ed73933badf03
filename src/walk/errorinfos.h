// ErrorInfos: the findings of the walk and of the rules, and the report line that each one becomes.
//
// The report line, 173 bytes:
//
//   column  offset  width  field             meaning
//        1       0     10  lineNumber        1-based number of the segment, zero-filled
//        2      10      3  elementPosition   zero-filled; 0 for a structural error
//        3      13      2  subElementText    "00" where there is none
//        4      15      8  segmentId
//        5      23      5  errorCode
//        6      28      6  loopId
//        7      34      4  txnText           "NONE" for a structural error
//        8      38      4  segText           "SEG" for a structural error; three characters at most, printed four wide
//        9      42     80  errorText         "ERROR" for a structural error
//       10     122     50  elementText       "Element Text" for a structural error
//              172      1                    '$'
#pragma once

#include "common/managedarray.h"

// The codes of structural errors. Two share "3" on purpose, and there is no "6".
inline constexpr char ERR_SEG_TOO_FEW[] = "1";
inline constexpr char ERR_SEG_OUT_OF_SEQUENCE[] = "2";
inline constexpr char ERR_SEG_MISSING_MANDATORY[] = "3";
inline constexpr char ERR_LOOP_MISSING_INITIATOR[] = "3";
inline constexpr char ERR_LOOP_TOO_MANY_ITERATION[] = "4";
inline constexpr char ERR_SEG_EXCEED_LIMIT[] = "5";
inline constexpr char ERR_LOOP_MISSING_ID[] = "7";
inline constexpr char ERR_SEG_DATA_ELEMENT[] = "8";

// The names of errors that GetErrorText serves. The index is a numbering of its own: only 5 agrees with a code above.
inline constexpr char const* errtab[] = {
    "",
    "ERR_LOOP_EXCEED_LIMIT",
    "ERR_LOOP_MISSING_INITIATOR",
    "ERR_LOOP_TOO_MANY_ITERATION",
    "ERR_SEG_OUT_OF_SEQUENCE",
    "ERR_SEG_EXCEED_LIMIT",
    "ERR_SEG_MISSING_MANDATORY",
    "ERR_SEG_TOO_FEW",
    "ERR_LOOP_MISSING_ID",
    "ERR_SEG_DATA_ELEMENT",
};

/// One finding. A text that fills its field has no terminator, so whoever reads a field bounds the reading.
struct ErrorInfo {
    char segmentId[32] = "";
    int lineNumber = 0;
    int elementPosition = 0;
    char errorCode[6] = "ErrCd";
    char loopId[7] = "LOOP";
    char txnText[5] = "TXN";
    char segText[4] = "SEG";
    char spareMark[2] = "X";
    char errorText[81] = "Error";
    char contextText[36] = "Context";
    char elementText[51] = "Element Text";
    char subElementText[3] = "00";
};

class ErrorInfos {
public:
    ManagedArray<ErrorInfo> records;
    int count = 0;  // records in use. The walk sets it back to discard findings; what lies behind is overwritten later

    static constexpr int lineLength = 173;

    /// Throws szFailure where there is no memory.
    ErrorInfos();
    virtual ~ErrorInfos();

    /// Appends one finding. Texts are copied and cut to their fields; a null text counts as an empty one. There is no
    /// test for duplicates. Throws szFailure where there is no memory.
    void add(int lineNumber, int elementPosition, char const* segmentId, char const* errorCode, char const* loopId,
             char const* txnText, char const* segText, char const* errorText, char const* elementText,
             char const* subElementText);

    /// Bytes of the report of all findings, without a terminator: 173 a line, and more only where a number is too wide
    /// for its column.
    std::size_t reportLength() const;

    /// Prints the report, in order of arrival, into `reply`, which has room for reportLength() + 1 bytes.
    void printReport(char* reply) const;
};
