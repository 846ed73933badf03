// A table of texts with aligned columns.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace edicheck {

class Table {
public:
    explicit Table(std::vector<std::string> heads);

    // One cell for each head.
    void add(std::vector<std::string> row);

    // Heads and rows, each behind `indent`. A column without a text in any row is left out.
    void print(std::ostream& out, const std::string& indent) const;

private:
    std::vector<std::vector<std::string>> rows_;  // the heads first
};

}  // namespace edicheck
