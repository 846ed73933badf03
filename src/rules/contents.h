// Contents: the values that rules take out of a message, and the content line that each one becomes.
//
// The content line, 223 bytes:
//
//   column  offset  width  field               meaning
//        1       0     10  lineNumber          1-based line, zero-filled
//        2      10      3  elementPosition     zero-filled
//        3      13      2  subElementPosition  zero-filled; 0 when the value is a whole element
//        4      15      8  segmentText
//        5      23      5  errorCode
//        6      28      6  loopId
//        7      34      4  txnText
//        8      38      4  segText             three characters at most, printed four wide
//        9      42     80  errorText           the rule's message
//       10     122     20  codeVal             the value
//       11     142      8  qualVal
//       12     150      8  keyVal
//       13     158      8  dateVal
//       14     166      2  v1Val
//       15     168      4  v2PatternId         two characters at most, printed four wide
//       16     172     50  codeTableIdVal      twenty characters at most
//              222      1                      '$'
#pragma once

#include "common/managedarray.h"

/// One value. A text that fills its field has no terminator, so whoever reads a field bounds the reading.
struct Content {
    char segmentText[32] = "";
    int lineNumber = 0;
    int elementPosition = 0;
    int subElementPosition = 0;
    char codeVal[20] = "CodeVal";
    char keyVal[8] = "KeyVal";
    char qualVal[8] = "QualVal";
    char dateVal[8] = "DateVal";
    char codeTableIdVal[20] = "CodeTableIDVal";
    char v1Val[2] = {'V', '1'};
    char v2PatternId[22] = "V2PatternID";
    char errorCode[6] = "ErrCd";
    char loopId[7] = "LOOP";
    char txnText[5] = "TXN";
    char segText[4] = "SEG";
    char errorText[81] = "Error";
    char subElementText[3] = "00";
};

class Contents {
public:
    ManagedArray<Content> records;
    int count = 0;  // records in use

    static constexpr int lineLength = 223;

    /// Throws szFailure where there is no memory.
    Contents();
    virtual ~Contents();

    /// Appends one value. Texts are copied and cut to their fields; a null text counts as an empty one.
    /// Throws szFailure where there is no memory.
    void add(int lineNumber, int elementPosition, int subElementPosition, char const* segmentText, char const* codeVal,
             char const* qualVal, char const* keyVal, char const* dateVal, char const* codeTableIdVal,
             char const* v1Val, char const* v2PatternId, char const* errorCode, char const* loopId, char const* txnText,
             char const* segText, char const* errorText);

    /// Bytes of the report of all values, without a terminator: 223 a line, and more only where a number is too wide
    /// for its column.
    std::size_t reportLength() const;

    /// Prints the report, in order of arrival, into `reply`, which has room for reportLength() + 1 bytes.
    void printReport(char* reply) const;
};
