// What CreateStruct, ValidateStruct and RunRules cost, beside the least that anyone who reads the same bytes has to do:
// a pass of memchr from one record end to the next. The two are timed in turn, in one run, and their best times are
// given as a ratio, which moves far less from machine to machine than the times do.
//
// Making and destroying objects, and filling their input, lies outside of what is timed.
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <time.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "messages.h"
#include "object.h"

namespace {

/// Processor time of this thread: what others do on the machine shows less in it than on a clock at the wall.
double threadSeconds() {
    timespec now = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

template <typename Work>
double secondsOf(Work work) {
    double const start = threadSeconds();
    work();
    return threadSeconds() - start;
}

std::size_t countRecords(std::string const& text, char recordEnd) {
    char const* position = text.data();
    char const* const end = position + text.size();
    std::size_t records = 0;
    while (auto* hit = std::memchr(position, recordEnd, static_cast<std::size_t>(end - position))) {
        position = static_cast<char const*>(hit) + 1;
        ++records;
    }
    return records;
}

/// How many times a piece of work is done within one timing, so that the clock's own cost and grain don't show.
std::size_t batchFor(std::size_t bytes) {
    constexpr std::size_t timedBytes = 200'000;
    return std::max<std::size_t>(1, timedBytes / bytes);
}

/// Collects the timings of one benchmark, and tells its figures.
class Figures {
public:
    Figures(std::string const& readText, char textRecordEnd) : text(readText), recordEnd(textRecordEnd) {}

    /// Takes the time of one piece of work on the text, and times a pass of memchr beside it.
    void take(benchmark::State& state, double seconds) {
        state.SetIterationTime(seconds);
        best = std::min(best, seconds);
        std::size_t const batch = batchFor(text.size());
        double const passes = secondsOf([&] {
            for (std::size_t pass = 0; pass < batch; ++pass)
                benchmark::DoNotOptimize(records = countRecords(text, recordEnd));
        });
        bestPass = std::min(bestPass, passes / static_cast<double>(batch));
    }

    void tell(benchmark::State& state) const {
        auto const bytes = static_cast<double>(text.size());
        state.counters["bytes/s"] = bytes / best;
        state.counters["memchr bytes/s"] = bytes / bestPass;
        state.counters["ratio"] = best / bestPass;
        state.counters["ns/record"] = best / static_cast<double>(records) * 1e9;
    }

private:
    std::string const& text;
    char recordEnd;
    std::size_t records = 0;
    double best = std::numeric_limits<double>::infinity();
    double bestPass = std::numeric_limits<double>::infinity();
};

Object objectFor(Message const& message) {
    Object object(message.grammar);
    if (!message.delimiters.empty()) object.setDelimiters(message.delimiters);
    object.take(message.stream);
    return object;
}

void validate(benchmark::State& state, Message const& message) {
    Figures figures(message.stream, message.recordEnd);
    std::size_t const batch = batchFor(message.stream.size());
    for (auto iteration : state) {
        std::vector<Object> objects;
        for (std::size_t index = 0; index < batch; ++index)
            objects.push_back(objectFor(message));
        double const seconds = secondsOf([&] {
            for (Object& object : objects)
                object.validate();
        });
        figures.take(state, seconds / static_cast<double>(batch));
        if (!std::all_of(objects.begin(), objects.end(), [](Object const& object) { return object.isClean(); })) {
            state.SkipWithError("the message is not clean");
            return;
        }
    }
    figures.tell(state);
}

/// The ratio is to a pass over the stream for each rule.
void runRules(benchmark::State& state, Message const& message, std::size_t ruleCount) {
    std::string const rules = rulesForClaims(ruleCount);
    Figures figures(message.stream, message.recordEnd);
    for (auto iteration : state) {
        Object object = objectFor(message);
        object.validate();
        object.take(rules);
        double const seconds = secondsOf([&] { object.runRules(); });
        figures.take(state, seconds / static_cast<double>(ruleCount));
        if (!object.isClean()) {
            state.SkipWithError("the rules are not kept");
            return;
        }
    }
    figures.tell(state);
}

void create(benchmark::State& state, std::string const& grammar) {
    Figures figures(grammar, '$');
    std::size_t const batch = batchFor(grammar.size());
    for (auto iteration : state) {
        std::vector<std::string> texts(batch, grammar);
        std::vector<Object> objects;
        objects.reserve(batch);
        double const seconds = secondsOf([&] {
            for (std::string& text : texts)
                objects.emplace_back(std::move(text));
        });
        figures.take(state, seconds / static_cast<double>(batch));
    }
    figures.tell(state);
}

/// The timed part of a call is small beside the making of its object, so that the number of timings is set by hand.
template <typename Run>
void add(std::string const& name, int timings, Run run) {
    auto* added = benchmark::RegisterBenchmark(name.c_str(), run);
    added->Iterations(timings)->UseManualTime()->Unit(benchmark::kMicrosecond);
}

struct Size {
    std::size_t number;
    int timings;
};

void addAll() {
    add("CreateStruct, 200 records", 300, [](auto& state) { create(state, grammarOf(200)); });
    for (int kind : {1, 2}) {
        for (Size const size : {Size{50, 300}, Size{5'000, 300}, Size{500'000, 20}})
            add("ValidateStruct, kind " + std::to_string(kind) + ", segments: " + std::to_string(size.number),
                size.timings, [=](auto& state) { validate(state, plainMessage(kind, size.number)); });
    }
    for (Size const size : {Size{1'000, 100}, Size{10'000, 20}, Size{100'000, 10}})
        add("ValidateStruct, kind 2, claims: " + std::to_string(size.number), size.timings,
            [=](auto& state) { validate(state, claimBatch(size.number)); });
    constexpr std::size_t ruleCount = 50;
    constexpr std::size_t segmentsOfClaim = 18;
    for (Size const size : {Size{1'000, 100}, Size{10'000, 20}, Size{100'000, 10}})
        add("RunRules, one of 50 rules, lines: " + std::to_string(size.number), size.timings,
            [=](auto& state) { runRules(state, claimBatch(size.number / segmentsOfClaim), ruleCount); });
}

}  // namespace

// Where malloc is left to itself, what one benchmark frees decides whether the next one gets its memory from the heap
// or from the kernel. Here it stands from the start as it comes to stand in a host that has run for a while.
int main(int argc, char** argv) {
    constexpr int largestHeapBlock = 32 << 20;
    mallopt(M_MMAP_THRESHOLD, largestHeapBlock);
    mallopt(M_TRIM_THRESHOLD, 2 * largestHeapBlock);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    addAll();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
