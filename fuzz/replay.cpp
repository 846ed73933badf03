// Stands in for the fuzzer: runs a target over files, and over all files of folders. An input of less than 100,000
// bytes that takes more than two seconds ends the run as a crash does; sanitizers get more time.
#include <unistd.h>

#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr unsigned secondsAtMost = 20;
#else
constexpr unsigned secondsAtMost = 2;
#endif
constexpr std::size_t timedSize = 100'000;

std::string current;

extern "C" void onSignal(int) {
    static char const text[] = "took too long: ";
    auto const written =
        write(STDERR_FILENO, text, sizeof text - 1) + write(STDERR_FILENO, current.data(), current.size());
    _exit(written > 0 ? 1 : 2);
}

void replay(std::filesystem::path const& path) {
    current = path.string();
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::filesystem::filesystem_error("cannot be read", path, std::error_code());
    std::string const input{std::istreambuf_iterator<char>(file), {}};
    if (input.size() < timedSize) alarm(secondsAtMost);
    LLVMFuzzerTestOneInput(reinterpret_cast<std::uint8_t const*>(input.data()), input.size());
    alarm(0);
}

}  // namespace

int main(int argc, char** argv) {
    std::signal(SIGALRM, onSignal);
    std::size_t count = 0;
    for (int index = 1; index < argc; ++index) {
        if (!std::filesystem::is_directory(argv[index])) {
            if (!std::filesystem::exists(argv[index])) continue;  // a target without findings
            replay(argv[index]);
            ++count;
            continue;
        }
        for (auto const& entry : std::filesystem::recursive_directory_iterator(argv[index])) {
            if (!entry.is_regular_file()) continue;
            replay(entry.path());
            ++count;
        }
    }
    std::cout << count << " inputs replayed\n";
    return count > 0 ? 0 : 1;
}
