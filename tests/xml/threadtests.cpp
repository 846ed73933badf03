// Separate objects in separate threads.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "xmlcalls.h"

namespace xmltests {
namespace {

constexpr std::size_t threadCount = 8;
constexpr std::size_t callsEach = 50;

// What a thread asks for in its call: findings of a size of their own, a schema, an encoding, an entity.
std::string documentOf(std::size_t thread, std::size_t call) {
    const std::string name(1 + thread * 100 + call, 'n');
    switch (call % 4) {
        case 0:
            return '<' + name + "/>";
        case 1:
            return order("order.xsd", "<number>" + std::to_string(thread) + "</number>");
        case 2:
            return "<?xml version='1.0' encoding='ISO-8859-1'?><" + name + ">\xE4</" + name + '>';
        default:
            return "<!DOCTYPE a [<!ELEMENT a ANY><!ENTITY e '" + name + "'>]><a>&e;</a>";
    }
}

class Threads : public InSchemaFolder {};

// The threads wait for one another, so that the parser's first use is all of theirs.
TEST_F(Threads, may_validate_side_by_side_from_the_first_call_on) {
    std::vector<std::vector<std::string>> texts(threadCount, std::vector<std::string>(callsEach));
    library();
    std::atomic<std::size_t> ready{0};
    std::vector<std::thread> threads;
    for (std::size_t thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([&, thread] {
            const Object object;
            ++ready;
            while (ready < threadCount)
                std::this_thread::yield();
            for (std::size_t call = 0; call < callsEach; ++call)
                texts[thread][call] = object.validate(documentOf(thread, call));
        });
    }
    for (std::thread& thread : threads)
        thread.join();

    for (std::size_t thread = 0; thread < threadCount; ++thread) {
        for (std::size_t call = 0; call < callsEach; ++call) {
            EXPECT_EQ(texts[thread][call], validate(documentOf(thread, call))) << thread << ", " << call;
            EXPECT_EQ(texts[thread][call].empty(), call % 4 == 3) << thread << ", " << call;
        }
    }
}

}  // namespace
}  // namespace xmltests
