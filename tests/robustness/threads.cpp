// Separate objects on separate threads, through all exports: eight threads play all cases, each in an order of its own,
// and each answer must be the one that the case expects. Built with the thread sanitizer (scripts/threads), this also
// shows whatever the threads share without leave.
#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <mutex>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "casefile.h"
#include "caserun.h"

namespace {

constexpr std::size_t threadNumber = 8;

// threads FOLDER... [FILE...]: the cases in folders, and single ones.
std::vector<cases::CaseFile> readCases(int argc, char** argv) {
    std::vector<cases::CaseFile> files;
    for (int index = 1; index < argc; ++index) {
        const std::string path = argv[index];
        if (!std::filesystem::is_directory(path)) {
            files.push_back(cases::readCase(path));
            continue;
        }
        for (const auto& entry : std::filesystem::recursive_directory_iterator(path))
            if (entry.path().extension() == ".case") files.push_back(cases::readCase(entry.path().string()));
    }
    return files;
}

class Run {
public:
    Run(const std::vector<cases::CaseFile>& files, const cases::Host& host) : files_(files), host_(host) {}

    // Answers whether every case held on every thread.
    bool play() {
        std::vector<std::thread> threads;
        for (std::size_t thread = 0; thread < threadNumber; ++thread)
            threads.emplace_back([this, thread] { playAll(static_cast<unsigned>(thread)); });
        for (std::thread& thread : threads)
            thread.join();
        return failures_ == 0;
    }

private:
    const std::vector<cases::CaseFile>& files_;
    const cases::Host& host_;
    std::atomic<std::size_t> ready_{0};
    std::atomic<std::size_t> failures_{0};
    std::mutex outputLock_;

    // The threads wait for one another, so that the first call of each kind is all of theirs.
    void playAll(unsigned thread) {
        std::vector<std::size_t> order(files_.size());
        for (std::size_t index = 0; index < order.size(); ++index)
            order[index] = index;
        std::shuffle(order.begin(), order.end(), std::minstd_rand(thread));
        ++ready_;
        while (ready_ < threadNumber)
            std::this_thread::yield();
        for (const std::size_t index : order)
            playOne(files_[index], thread);
    }

    void playOne(const cases::CaseFile& file, unsigned thread) {
        for (const cases::Failure& failure : cases::runCase(file, host_)) {
            ++failures_;
            const std::lock_guard<std::mutex> lock(outputLock_);
            std::cerr << "thread " << thread << ": " << file.path << ':' << failure.line << ": " << failure.text
                      << '\n';
        }
    }
};

}  // namespace

int main(int argc, char** argv) {
    const std::vector<cases::CaseFile> files = readCases(argc, argv);
    if (files.empty()) {
        std::cerr << "threads: there are no cases\n";
        return EXIT_FAILURE;
    }
    const cases::Host host(cases::openLibrary());
    if (!Run(files, host).play()) return EXIT_FAILURE;
    std::cout << files.size() << " cases held on " << threadNumber << " threads\n";
    return EXIT_SUCCESS;
}
