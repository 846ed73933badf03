// Fuzz target: rule records over a located claim, whole and cut off inside its loops.
#include "exits.h"

namespace {

constexpr char grammar[] =
    "2M|1|1|ST$M|1|1|BHT$"
    "M|0|0|UnorderedGroup 2000$"
    "O|0|0|Loop 2000A$M|1|1|HL|20$O|0|1|PRV$O|0|1|CUR$M|0|1|NM1$O|0|2|REF$M|0|0|EndLoop$"
    "O|0|0|Loop 2000B$M|1|1|HL|22$O|0|1|SBR$O|0|2|NM1$O|0|1|DMG$"
    "O|0|0|Loop 2300$M|1|1|CLM$O|0|0|DTP$O|0|0|AMT$O|0|0|REF$O|0|0|HI$"
    "O|0|0|Loop 2400$M|1|1|LX$M|0|1|SV1$O|0|0|DTP$O|0|0|REF$M|0|0|EndLoop$"
    "M|0|0|EndLoop$M|0|0|EndLoop$M|0|0|EndUnorderedGroup$M|1|1|SE$";

/// One segment a line in the stream form; the identifier of an HL is its level.
constexpr char const* segments[] = {
    "ST 837  ", "ST*837*0001",
    "BHT0019 ", "BHT*0019*00*1",
    "HL 20   ", "HL*1**20*1",
    "NM185   ", "NM1*85*2*CLINIC",
    "REFEI   ", "REF*EI*123456789",
    "HL 22   ", "HL*2*1*22*0",
    "SBRP    ", "SBR*P*18",
    "NM1IL   ", "NM1*IL*1*DOE*JANE",
    "DMGD8   ", "DMG*D8*19700101*F",
    "CLMA    ", "CLM*A*100.00***11:B:1*Y",
    "DTP431  ", "DTP*431*D8*20260102",
    "AMTF5   ", "AMT*F5*10",
    "HI BK   ", "HI*BK:8901*BF:87200^BF:5559",
    "LX 1    ", "LX*1",
    "SV1HC   ", "SV1*HC:99213:25*60.00*UN*1",
    "DTP472  ", "DTP*472*D8*20260101",
    "REF6R   ", "REF*6R*L1",
    "LX 2    ", "LX*2",
    "SV1HC   ", "SV1*HC:87070*40.00*UN*1",
    "REF6R   ", "REF*6R*L1",
    "CLMB    ", "CLM*B*50***11:B:1*Y",
    "LX 1    ", "LX*1",
    "SV1HC   ", "SV1*HC:86663*50*UN*U",
    "SE 25   ", "SE*25*0001",
};

std::string streamUpTo(std::size_t count) {
    std::string stream;
    for (std::size_t index = 0; index + 1 < 2 * count; index += 2)
        stream += std::string(segments[index]) + "       " + segments[index + 1] + "~";
    return stream;
}

void run(std::string const& stream, std::string const& records) {
    fuzz::Object const object(grammar);
    object.call(SetDelimiters, "*:~X");
    object.call(ValidateStruct, stream);
    object.call(RunRules, records);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(unsigned char const* data, unsigned long size) {
    constexpr std::size_t count = sizeof segments / sizeof *segments / 2;
    std::string const records(reinterpret_cast<char const*>(data), size);
    run(streamUpTo(count), records);
    run(streamUpTo(count - 2), records);
    return 0;
}
