// Small grammars and messages that the tests of the tool share.
#pragma once

#include <string>

namespace edicheck {

const std::string kIsa =
    "ISA*00*          *00*          *ZZ*SENDER         *ZZ*RECEIVER       *200101*1200*^*00501*000000001*0*T*:~\n";

// An X12 interchange of one group around the segments of its transactions.
inline std::string x12(const std::string& transactions) {
    return kIsa + "GS*PO*SENDER*RECEIVER*20200101*1200*1*X*005010~\n" + transactions + "GE*1*1~\nIEA*1*000000001~\n";
}

const std::string kOrderGrammar =
    "# a small order\n"
    "2M|1|1|ST$\n"
    "M|1|1|BEG$\n"
    "O|0|2|REF$\n"
    "M|1|2|Loop 1000$\n"
    "  M|1|1|N1|BY|ST$\n"
    "  O|0|1|N3$\n"
    "M|1|1|EndLoop$\n"
    "M|1|1|SE$\n";

const std::string kOrder =
    "ST*850*0001~\nBEG*00*SA*4711~\nREF*CO*1~\nN1*BY*BUYER~\nN3*MAIN STREET~\nN1*ST*STORE~\nSE*7*0001~\n";

// A kind 1 grammar of the same order: identifiers have no place in it.
const std::string kOrderGrammarOfKind1 =
    "1M|1|1|ST$M|1|1|BEG$O|0|2|REF$M|1|2|Loop 1000$M|1|1|N1$O|0|1|N3$M|1|1|EndLoop$M|1|1|SE$";

const std::string kEdifactGrammar = "2M|1|1|UNH$M|1|1|BGM$O|0|1|FTX$O|0|5|RFF$M|1|1|UNT$\n";

inline std::string edifact(const std::string& messages) {
    return "UNB+UNOA:1+SENDER+RECEIVER+200101:1200+1'\n" + messages + "UNZ+1+1'\n";
}

}  // namespace edicheck
