// One input of several texts.
#include "parts.h"

std::vector<std::string> fuzz::partsOf(std::uint8_t const* data, std::size_t size, std::size_t number) {
    std::string rest(reinterpret_cast<char const*>(data), size);
    std::vector<std::string> parts;
    while (parts.size() < number) {
        std::size_t const end = rest.find(separator);
        parts.push_back(rest.substr(0, end));
        rest = end == std::string::npos ? "" : rest.substr(end + sizeof separator - 1);
    }
    return parts;
}
