// The reader of interchange files.
//
// The delimiters of X12 stand in the ISA segment: the element separator behind the id, the component separator as its
// sixteenth element (byte 104, the ISA being of fixed width), the terminator behind that (byte 105). The sixteenth
// element is found by counting, which gives the same bytes and also serves an ISA whose fields were not filled up.
#include "interchange.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

#include "text.h"

namespace edicheck {

namespace {

constexpr std::size_t kIsaElements = 16;
constexpr std::size_t kUnaLength = 9;
constexpr Delimiters kEdifactDefaults = {'+', ':', '\'', '?'};

struct Envelope {
    std::string_view begin;                 // first segment of a transaction
    std::string_view end;                   // its last segment
    std::string_view interchangeEnd;        // last segment of the interchange
    std::array<std::string_view, 4> other;  // what else may stand around transactions
};

constexpr Envelope kX12 = {"ST", "SE", "IEA", {"ISA", "GS", "GE", "TA1"}};
constexpr Envelope kEdifact = {"UNH", "UNT", "UNZ", {"UNB", "UNG", "UNE", "UNA"}};

bool isAlnum(char character) {
    return std::isalnum(static_cast<unsigned char>(character)) != 0;
}

// A header is its id and a delimiter behind it.
bool beginsInterchange(std::string_view text) {
    const bool known = startsWith(text, "ISA") || startsWith(text, "UNA") || startsWith(text, "UNB");
    return known && (text.size() == 3 || !isAlnum(text[3]));
}

bool usable(const Delimiters& delimiters) {
    const auto [element, component, terminator, release] = delimiters;
    return element != component && element != terminator && component != terminator && !isAlnum(element) &&
           !isAlnum(component) && !isAlnum(terminator);
}

std::optional<Delimiters> delimitersOfIsa(std::string_view text) {
    if (text.size() < 4) return std::nullopt;
    const char element = text[3];
    std::size_t last = 3;
    for (std::size_t i = 1; i < kIsaElements && last != text.npos; ++i)
        last = text.find(element, last + 1);
    if (last == text.npos || last + 2 >= text.size()) return std::nullopt;
    return Delimiters{element, text[last + 1], text[last + 2], std::nullopt};
}

std::optional<Delimiters> delimitersOfUna(std::string_view text) {
    if (text.size() < kUnaLength) return std::nullopt;
    Delimiters delimiters = {text[4], text[3], text[8], text[6]};
    if (text[6] == ' ') delimiters.release.reset();
    return delimiters;
}

class Reader {
public:
    explicit Reader(std::string_view text) : text_(text) {}

    InterchangeFile read() {
        if (startsWith(text_, kByteOrderMark)) moveTo(kByteOrderMark.size());
        skipSpace();
        if (!beginsInterchange(rest())) stop("no interchange begins here: there is no ISA, UNA or UNB");
        while (!file_.error && position_ < text_.size()) {
            if (beginsInterchange(rest())) {
                readInterchange();
                skipSpace();
            } else {
                note(line_, "what stands behind the end of the interchange is not looked at");
                break;
            }
        }
        return std::move(file_);
    }

private:
    std::string_view rest() const { return text_.substr(position_); }

    void moveTo(std::size_t position) {
        line_ = lineAt(text_, position, position_, line_);
        position_ = position;
    }

    void note(std::size_t line, const std::string& what) { file_.notes.push_back({line, what}); }

    void stop(const std::string& why) { file_.error = Note{line_, why}; }

    bool isDelimiter(char character) const {
        return character == delimiters_.element || character == delimiters_.component;
    }

    void skipSpace() {
        std::size_t position = position_;
        while (position < text_.size() && isSpace(text_[position]) && !isDelimiter(text_[position]))
            ++position;
        moveTo(position);
    }

    // Takes the delimiters of the interchange that begins here, and passes over the UNA, which is no segment.
    bool readDelimiters() {
        std::optional<Delimiters> found;
        const char* why = "";
        if (startsWith(rest(), "ISA")) {
            found = delimitersOfIsa(rest());
            why = "the ISA segment does not tell the delimiters: it is cut short, or has not 16 elements";
        } else if (startsWith(rest(), "UNA")) {
            found = delimitersOfUna(rest());
            why = "the UNA does not tell the delimiters: six service characters have to follow it";
        } else if (startsWith(rest(), "UNB+")) {
            found = kEdifactDefaults;
        } else {
            why = "the UNB segment is not followed by '+', and there is no UNA that tells the delimiters";
        }
        if (!found || !usable(*found)) {
            stop(why);
            return false;
        }
        delimiters_ = *found;
        if (startsWith(rest(), "UNA")) moveTo(position_ + kUnaLength);
        return true;
    }

    // Past the last terminator, the segment ends with the text.
    Segment nextSegment() {
        const std::size_t begin = position_;
        std::size_t end = begin;
        while (end < text_.size() && text_[end] != delimiters_.terminator) {
            end += text_[end] == delimiters_.release ? 2 : 1;
        }
        end = std::min(end, text_.size());
        const Segment segment = {text_.substr(begin, end - begin), line_};
        moveTo(std::min(end + 1, text_.size()));
        return segment;
    }

    void readInterchange() {
        const Envelope& envelope = startsWith(rest(), "ISA") ? kX12 : kEdifact;
        if (!readDelimiters()) return;
        open_ = nullptr;
        stray_ = false;
        skipSpace();
        for (bool header = true; position_ < text_.size(); header = false) {
            if (!header && beginsInterchange(rest())) break;
            const Segment segment = nextSegment();
            const std::string id = firstComponent(segment.text, delimiters_, 0);
            place(segment, id, envelope);
            if (id == envelope.interchangeEnd) return;
            skipSpace();
        }
        closeTransaction(envelope);
        note(line_, "the interchange has no " + std::string(envelope.interchangeEnd) + " segment: it may be cut short");
    }

    void place(const Segment& segment, const std::string& id, const Envelope& envelope) {
        const bool outer = id == envelope.interchangeEnd ||
                           std::find(envelope.other.begin(), envelope.other.end(), id) != envelope.other.end();
        if (outer || id == envelope.begin) closeTransaction(envelope);
        if (id == envelope.begin) {
            openTransaction(segment);
        } else if (open_ != nullptr) {
            open_->segments.push_back(segment);
            if (id == envelope.end) open_ = nullptr;
        } else if (!outer && !stray_) {
            note(segment.line, "segments stand outside of a transaction and are not looked at: " + id);
            stray_ = true;
        }
    }

    void openTransaction(const Segment& segment) {
        // UNH has the control number first, and the type behind it.
        const bool unh = startsWith(segment.text, kEdifact.begin);
        Transaction transaction;
        transaction.type = firstComponent(segment.text, delimiters_, unh ? 2 : 1);
        transaction.control = firstComponent(segment.text, delimiters_, unh ? 1 : 2);
        transaction.delimiters = delimiters_;
        transaction.segments.push_back(segment);
        open_ = &file_.transactions.emplace_back(std::move(transaction));
        stray_ = false;
    }

    void closeTransaction(const Envelope& envelope) {
        if (open_ == nullptr) return;
        note(open_->segments.front().line, "transaction " + open_->type + " " + open_->control + " has no " +
                                               std::string(envelope.end) + " segment: it is checked up to line " +
                                               std::to_string(open_->segments.back().line) + ", where it ends");
        open_ = nullptr;
    }

    std::string_view text_;
    std::size_t position_ = 0;
    std::size_t line_ = 1;
    Delimiters delimiters_ = kEdifactDefaults;
    Transaction* open_ = nullptr;  // borrowed from file_.transactions, whose last one it is
    bool stray_ = false;           // a segment outside of a transaction was told already
    InterchangeFile file_;
};

}  // namespace

InterchangeFile readInterchanges(std::string_view text) {
    return Reader(text).read();
}

std::string firstComponent(std::string_view text, const Delimiters& delimiters, std::size_t element) {
    std::string value;
    std::size_t current = 0;
    bool first = true;
    visitCharacters(text, delimiters, [&](char character, Role role) {
        if (role == Role::ElementDelimiter) {
            ++current;
            first = true;
        } else if (role == Role::ComponentDelimiter) {
            first = false;
        } else if (current == element && first) {
            value += character;
        }
    });
    return value;
}

}  // namespace edicheck
