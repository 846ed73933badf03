// The grammars and messages of the benchmark.
#include "messages.h"

#include <array>
#include <iterator>
#include <utility>

namespace {

constexpr char kind1End = '$';
constexpr char kind2End = '~';
constexpr char kind2Delimiters[] = "*:~X";

/// Writes a stream of either kind, segment by segment.
class StreamWriter {
public:
    explicit StreamWriter(int grammarKind) : isKind1(grammarKind == 1) {}

    void add(std::string const& id, std::string const& elements, std::string const& identifier = "") {
        constexpr std::size_t idWidth = 3;
        constexpr std::size_t identifierWidth = 5;
        constexpr std::size_t unreadWidth = 7;
        stream += filled(id, idWidth);
        if (!isKind1) stream += filled(identifier, identifierWidth) + std::string(unreadWidth, ' ');
        stream += id + '*' + elements;
        stream += isKind1 ? kind1End : kind2End;
        ++records;
    }

    Message message(std::string grammar) {
        return {std::move(grammar), isKind1 ? "" : kind2Delimiters, std::move(stream), records,
                isKind1 ? kind1End : kind2End};
    }

private:
    bool isKind1;
    std::string stream;
    std::size_t records = 0;

    static std::string filled(std::string text, std::size_t width) {
        text.resize(width, ' ');
        return text;
    }
};

constexpr char claimGrammar[] =
    "2M|1|1|ST$"
    "M|1|1|BHT$"
    "M|1|1|Loop 1000A$"
    "M|1|1|NM1|41$"
    "O|0|2|PER$"
    "M|1|1|EndLoop$"
    "M|1|1|Loop 1000B$"
    "M|1|1|NM1|40$"
    "M|1|1|EndLoop$"
    "M|1|0|Loop 2000A$"
    "M|1|1|HL|20$"
    "O|0|1|PRV$"
    "M|1|1|Loop 2010AA$"
    "M|1|1|NM1|85$"
    "M|0|1|N3$"
    "M|0|1|N4$"
    "M|0|1|REF$"
    "M|1|1|EndLoop$"
    "O|0|0|Loop 2000B$"
    "M|1|1|HL|22$"
    "M|0|1|SBR$"
    "M|1|1|Loop 2010BA$"
    "M|1|1|NM1|IL$"
    "O|0|1|N3$"
    "O|0|1|N4$"
    "O|0|1|DMG$"
    "M|1|1|EndLoop$"
    "M|1|1|Loop 2010BB$"
    "M|1|1|NM1|PR$"
    "M|1|1|EndLoop$"
    "O|0|100|Loop 2300$"
    "M|1|1|CLM$"
    "O|0|10|DTP$"
    "O|0|10|REF$"
    "M|0|12|HI$"
    "O|0|0|UnorderedGroup 2310$"
    "O|0|1|Loop 2310A$"
    "M|1|1|NM1|DN$"
    "M|1|1|EndLoop$"
    "O|0|1|Loop 2310B$"
    "M|1|1|NM1|82$"
    "O|0|1|PRV$"
    "M|1|1|EndLoop$"
    "M|1|1|EndUnorderedGroup$"
    "M|1|50|Loop 2400$"
    "M|1|1|LX$"
    "M|0|1|SV1$"
    "O|0|10|DTP$"
    "M|1|1|EndLoop$"
    "M|1|1|EndLoop$"
    "M|1|1|EndLoop$"
    "M|1|1|EndLoop$"
    "M|1|1|SE$";

// Rules as a partner writes them, which the claims of the batch keep.
constexpr char const* claimRules[] = {
    // a claim has a diagnosis
    "3|L|||2300|CLM|1||||||||2300|HI|1|||||||||L|E|837|SEG|message|||$",
    // a subscriber line has no later duplicate flag
    "2|L|||2000B|SBR|1||||||||2000B|SBR|2||99|||||||L|E|837|SEG|message|||$",
    // no claim has the forbidden frequency
    "4|L|||2300|CLM|5|3|1||||||2300|CLM|6||X|||||||L|E|837|SEG|message|||$",
    // a claim total is the sum of its service lines
    "8|S||||CLM|2||||||||2400|SV1|2||||||||2300|L|E|837|SEG|message|||$",
    // service lines count 1, 2
    "7|R|||2400|LX|1||||||||2300|CLM||||||||||L|E|837|SEG|message|||$",
    // a claim has no two diagnoses of one text
    "10|L|||2300|HI|1||ABK:J020||||||||2|||||||||L|E|837|SEG|message|||$",
    // an accepted claim has an onset date
    "29|L|||2300|CLM|7||A*B||||||2300|DTP|1||431|||||||L|E|837|SEG|message|||$",
    // no service line has the forbidden unit
    "40|L|||2400|SV1|3||ZZ|||||||||||||||||L|E|837|SEG|message|||$",
    // a member is no duplicate of another
    "19|R|||2300|CLM|1||||||||2300|DTP|3|||||||||L|E|837|SEG|message|||$",
    // a claim needs its rendering provider before the first line
    "12|S|||2300|CLM|7||A||||||2310B|NM1|1|||2400|LX|1|||2300|L|E|837|SEG|message|||$",
};

void addClaim(StreamWriter& writer, std::string const& number) {
    writer.add("HL", number + "*1*22*0", "22");
    writer.add("SBR", "P*18*GROUP77******CI");
    writer.add("NM1", "IL*1*DOE*JANE****MI*00221" + number, "IL");
    writer.add("N3", "236 NORTH MAIN STREET");
    writer.add("N4", "MIAMI*FL*33413");
    writer.add("DMG", "D8*19430501*F");
    writer.add("NM1", "PR*2*GENERAL INSURANCE****PI*84739", "PR");
    writer.add("CLM", "ACCT" + number + "*100***11:B:1*Y*A*Y*I");
    writer.add("DTP", "431*D8*20240501");
    writer.add("HI", "ABK:J020*ABF:Z1159");
    writer.add("NM1", "82*1*KILDARE*BEN****XX*1234567893", "82");
    writer.add("PRV", "PE*PXC*203BF0100Y");
    for (char const* line : {"1", "2"}) {
        writer.add("LX", line);
        writer.add("SV1", "HC:99213*50*UN*1***1");
        writer.add("DTP", "472*D8*20240503");
    }
}

}  // namespace

Message plainMessage(int kind, std::size_t records) {
    static constexpr std::array<char const*, 6> ids = {"BEG", "CUR", "REF", "DTM", "PID", "AMT"};
    std::string grammar = std::to_string(kind) + "M|1|1|ST$";
    for (char const* id : ids)
        grammar += std::string("O|0|0|") + id + "$";
    grammar += "M|1|1|SE$";

    constexpr std::size_t envelope = 2;
    StreamWriter writer(kind);
    writer.add("ST", "850*0001");
    for (std::size_t index = 0; index < records - envelope; ++index)
        writer.add(ids[index * ids.size() / (records - envelope)], "ZZ*0012345678*EA");
    writer.add("SE", std::to_string(records) + "*0001");
    return writer.message(std::move(grammar));
}

Message claimBatch(std::size_t claims) {
    StreamWriter writer(2);
    writer.add("ST", "837*0001*005010X222A1");
    writer.add("BHT", "0019*00*0123*20240515*1200*CH");
    writer.add("NM1", "41*2*BILLING SERVICE*****46*TGJ23", "41");
    writer.add("PER", "IC*JERRY*TE*3055552222");
    writer.add("NM1", "40*2*GENERAL INSURANCE*****46*66783", "40");
    writer.add("HL", "1**20*1", "20");
    writer.add("NM1", "85*2*CLINIC*****XX*9876543210", "85");
    writer.add("N3", "234 SEAWAY ST");
    writer.add("N4", "MIAMI*FL*33111");
    writer.add("REF", "EI*587654321");
    for (std::size_t claim = 0; claim < claims; ++claim)
        addClaim(writer, std::to_string(claim + 2));
    writer.add("SE", "0*0001");
    return writer.message(claimGrammar);
}

std::string grammarOf(std::size_t records) {
    constexpr std::size_t loopLength = 10;  // "Loop", initiator, seven segments, "EndLoop"
    std::string grammar = "2";
    for (std::size_t index = 0; index < records; ++index) {
        std::string const number = std::to_string(index);
        switch (index % loopLength) {
            case 0:
                grammar += "O|0|10|Loop " + number + "$\n";
                break;
            case 1:
                grammar += "M|1|1|NM1|41|40|85$\n";
                break;
            case loopLength - 1:
                grammar += "M|1|1|EndLoop$\n";
                break;
            default:
                grammar += "O|0|5|S" + number + "$\n";
        }
    }
    return grammar;
}

std::string rulesForClaims(std::size_t number) {
    std::string records;
    for (std::size_t index = 0; index < number; ++index)
        records += claimRules[index % std::size(claimRules)];
    return records;
}
