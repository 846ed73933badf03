// endurance CASE ROUNDS [EVERY]: plays a case again and again. What the process holds must not grow once it has
// settled; EVERY so many rounds it is printed.
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "casefile.h"
#include "caserun.h"
#include "residentsize.h"

namespace {

constexpr long roundsToSettle = 1000;

// The allocator may take a few pages more or less. A leak of a single byte a round shows within a million rounds, one
// of a list of findings within a hundred.
constexpr long slack = 256 * 1024;

bool playRound(const cases::CaseFile& file, const cases::Host& host) {
    const std::vector<cases::Failure> failures = cases::runCase(file, host);
    for (const cases::Failure& failure : failures)
        std::cerr << file.path << ':' << failure.line << ": " << failure.text << '\n';
    return failures.empty();
}

}  // namespace

int main(int argc, char** argv) {
    const long rounds = argc > 2 ? std::atol(argv[2]) : 0;
    const long every = argc > 3 ? std::atol(argv[3]) : rounds;
    if (rounds <= roundsToSettle || every <= 0) {
        std::cerr << "endurance CASE ROUNDS [EVERY], with more than " << roundsToSettle << " rounds\n";
        return EXIT_FAILURE;
    }
    const cases::CaseFile file = cases::readCase(argv[1]);
    const cases::Host host(cases::openLibrary());
    long settled = 0;
    for (long round = 1; round <= rounds; ++round) {
        if (!playRound(file, host)) return EXIT_FAILURE;
        if (round == roundsToSettle) settled = cases::residentSize();
        if (round == roundsToSettle || round % every == 0 || round == rounds)
            std::cout << round << " rounds: " << cases::residentSize() / 1024 << " KiB" << std::endl;
    }
    const long growth = cases::residentSize() - settled;
    if (settled > 0 && growth <= slack) return EXIT_SUCCESS;
    std::cerr << "endurance: the process has grown by " << growth << " bytes since round " << roundsToSettle << '\n';
    return EXIT_FAILURE;
}
