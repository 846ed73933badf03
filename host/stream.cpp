// Building the stream forms, and reading the library's list of located segments.
#include "stream.h"

#include <algorithm>
#include <bitset>
#include <cctype>
#include <charconv>

#include "failure.h"
#include "text.h"

namespace edicheck {

namespace {

constexpr std::size_t kIdWidth = 3;
constexpr std::size_t kIdentifierWidth = 5;
constexpr std::size_t kIdentifierCharacters = 4;  // the fifth byte only says that the value is to be trimmed
constexpr std::size_t kUnreadWidth = 7;
constexpr std::size_t kHeadWidth = kIdWidth + kIdentifierWidth + kUnreadWidth;
constexpr char kRecordEnd = '$';      // ends a record in kind 1
constexpr char kDelimitersEnd = 'X';  // ends the delimiter text
constexpr char kPlaceholder = '?';    // stands for what cannot be delivered
constexpr std::size_t kLongestTerminator = 3;

std::string padded(std::string text, std::size_t width) {
    text.resize(width, ' ');
    return text;
}

// A blank id would be skipped as white space, and all records behind it would get another number; a longer one would be
// cut, and taken for another segment.
std::string deliverableId(const std::string& id) {
    const bool fits = !id.empty() && id.size() <= kIdWidth && std::all_of(id.begin(), id.end(), [](char character) {
        return std::isgraph(static_cast<unsigned char>(character)) && character != kRecordEnd;
    });
    return fits ? id : std::string(1, kPlaceholder);
}

// A NUL would end the text for the library.
char deliverable(char character) {
    return character == '\0' ? kPlaceholder : character;
}

std::string identifierField(std::string value) {
    std::transform(value.begin(), value.end(), value.begin(), deliverable);
    value.resize(std::min(value.size(), kIdentifierCharacters));
    return padded(value, kIdentifierWidth);
}

struct DeliveredDelimiters {
    char element;
    char component;
    char terminator;
};

// Bytes that a message does not hold as data, the information separators of ASCII first.
class FreeBytes {
public:
    void hold(char character) { held_.set(static_cast<unsigned char>(character)); }

    void hold(std::string_view text) {
        for (const char character : text)
            hold(character);
    }

    DeliveredDelimiters choose() {
        const char element = take();
        const char component = take();
        return {element, component, take()};
    }

    // The message's own where they can serve, and others in their place where not.
    DeliveredDelimiters chooseLike(const Delimiters& own) {
        const char element = takeLike(own.element);
        const char component = takeLike(own.component);
        return {element, component, takeLike(own.terminator)};
    }

private:
    char takeLike(char wanted) {
        const int byte = static_cast<unsigned char>(wanted);
        return isFree(byte) ? taken(byte) : take();
    }

    char take() {
        for (const int byte : {0x1D, 0x1F, 0x1C}) {
            if (isFree(byte)) return taken(byte);
        }
        for (int byte = 1; byte < 256; ++byte) {
            if (isFree(byte)) return taken(byte);
        }
        throw Failure("the message holds every byte that could be a delimiter: it is no text");
    }

    bool isFree(int byte) const {
        return !held_.test(static_cast<std::size_t>(byte)) && !std::isspace(byte) && byte != kDelimitersEnd;
    }

    char taken(int byte) {
        held_.set(static_cast<std::size_t>(byte));
        return static_cast<char>(byte);
    }

    std::bitset<256> held_;
};

std::string delimiterText(const DeliveredDelimiters& delivered) {
    return {delivered.element, delivered.component, delivered.terminator, kDelimitersEnd};
}

// The segment under the delimiters of the delivery.
std::string elementText(std::string_view text, const Delimiters& own, const DeliveredDelimiters& delivered) {
    std::string result;
    visitCharacters(text, own, [&](char character, Role role) {
        result += role == Role::ElementDelimiter     ? delivered.element
                  : role == Role::ComponentDelimiter ? delivered.component
                                                     : deliverable(character);
    });
    return result;
}

// Where the terminator stands at or behind `from`. On a mismatch the search goes on from the character that failed, as
// the library's does.
std::size_t findTerminator(std::string_view text, std::size_t from, std::string_view terminator) {
    while (true) {
        const std::size_t begin = text.find(terminator[0], from);
        if (begin == text.npos) return begin;
        std::size_t matched = 1;
        while (matched < terminator.size() && text.substr(begin + matched, 1) == terminator.substr(matched, 1))
            ++matched;
        if (matched == terminator.size()) return begin;
        from = begin + matched;
    }
}

// The id of a record as the library reads it: white space is trimmed if the field is whole.
std::string idOfRecord(std::string_view record) {
    std::string id(record.substr(0, kIdWidth));
    if (id.size() == kIdWidth) {
        while (!id.empty() && isSpace(id.back()))
            id.pop_back();
    }
    return id;
}

std::string unescaped(std::string_view option) {
    const auto fail = [] { throw Failure("--delimiters: a backslash is followed by n, r, t, \\ or xNN"); };
    std::string text;
    for (std::size_t i = 0; i < option.size(); ++i) {
        if (option[i] != '\\') {
            text += option[i];
            continue;
        }
        if (++i == option.size()) fail();
        switch (option[i]) {
            case 'n':
                text += '\n';
                break;
            case 'r':
                text += '\r';
                break;
            case 't':
                text += '\t';
                break;
            case '\\':
                text += '\\';
                break;
            case 'x': {
                const std::string_view digits = option.substr(i + 1, 2);
                unsigned value = 0;
                const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
                if (error != std::errc() || digits.size() != 2 || end != digits.data() + 2) fail();
                text += static_cast<char>(value);
                i += 2;
                break;
            }
            default:
                fail();
        }
    }
    return text;
}

std::optional<std::size_t> numberOf(std::string_view text) {
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

}  // namespace

IdentifierElements::IdentifierElements(std::string_view overrides) {
    while (!overrides.empty()) {
        const std::string_view pair = overrides.substr(0, overrides.find(','));
        const std::size_t sign = std::min(pair.find('='), pair.size());
        const std::string id(pair.substr(0, sign));
        const auto element = sign < pair.size() ? numberOf(pair.substr(sign + 1)) : std::nullopt;
        if (id.empty() || !element || *element == 0) {
            throw Failure("--identifier: \"" + std::string(pair) +
                          "\" is not a segment id, '=' and the number of an element, such as REF=2");
        }
        elements_[id] = *element;
        overrides.remove_prefix(std::min(pair.size() + 1, overrides.size()));
    }
}

std::size_t IdentifierElements::of(const std::string& segmentId) const {
    const auto found = elements_.find(segmentId);
    return found == elements_.end() ? 1 : found->second;
}

std::string parseDelimiters(std::string_view option) {
    const std::string text = unescaped(option);
    const std::string_view terminator = std::string_view(text).substr(std::min<std::size_t>(2, text.size()));
    const bool whole = terminator.size() >= 2 && terminator.size() <= kLongestTerminator + 1 &&
                       terminator.find(kDelimitersEnd) == terminator.size() - 1 && text.find('\0') == text.npos;
    if (!whole) {
        throw Failure(
            "--delimiters: give the element delimiter, the sub-element delimiter, a terminator of one to three "
            "characters, none of which is NUL or X, and an X, such as *:~X");
    }
    return text;
}

Delivery deliverTransaction(const Transaction& transaction, int kind, const IdentifierElements& identifiers) {
    const Delimiters& own = transaction.delimiters;
    FreeBytes free;
    for (const Segment& segment : transaction.segments) {
        visitCharacters(segment.text, own, [&free](char character, Role role) {
            if (role == Role::Text) free.hold(character);
        });
    }
    const DeliveredDelimiters delivered = free.chooseLike(own);

    Delivery delivery;
    if (kind == 2) delivery.delimiters = delimiterText(delivered);
    for (const Segment& segment : transaction.segments) {
        const std::string ownId = firstComponent(segment.text, own, 0);
        const std::string id = deliverableId(ownId);
        std::string head = padded(id, kIdWidth);
        if (kind == 2) {
            head += identifierField(firstComponent(segment.text, own, identifiers.of(ownId)));
            head.append(kUnreadWidth, ' ');
            delivery.stream.append(head).append(elementText(segment.text, own, delivered));
            delivery.stream += delivered.terminator;
        } else {
            delivery.stream.append(head) += kRecordEnd;
        }
        delivery.records.push_back({id, head, segment.text, segment.line});
    }
    return delivery;
}

Delivery deliverStream(std::string_view text, int kind, const std::string& delimiters) {
    Delivery delivery;
    delivery.stream = text;
    std::string terminator(1, kRecordEnd);
    if (kind == 2) {
        delivery.delimiters = delimiters;
        terminator = delimiters.substr(2, delimiters.size() - 3);
    }
    std::size_t position = 0;
    std::size_t line = 1;
    while (position < text.size()) {
        const std::size_t end = findTerminator(text, position, terminator);
        if (end == text.npos) {
            delivery.unendedLine = line;
            break;
        }
        const std::string_view record = text.substr(position, end - position);
        const bool hasText = kind == 2 && record.size() > kHeadWidth;
        delivery.records.push_back({idOfRecord(record), std::string(record.substr(0, kHeadWidth)),
                                    hasText ? record.substr(kHeadWidth) : record, line});
        std::size_t next = end + terminator.size();
        while (next < text.size() && isSpace(text[next]))
            ++next;
        line = lineAt(text, next, position, line);
        position = next;
    }
    return delivery;
}

Delivery numbered(const Delivery& delivery, const Grammar& grammar) {
    FreeBytes free;
    free.hold(grammar.text());
    for (const Record& record : delivery.records)
        free.hold(record.head);
    const DeliveredDelimiters delimiters = free.choose();

    Delivery result;
    result.delimiters = delimiterText(delimiters);
    result.records = delivery.records;
    for (std::size_t i = 0; i < delivery.records.size(); ++i) {
        // A head that the record's end cuts short is read up to a NUL, and so it is here.
        std::string head = delivery.records[i].head;
        head.resize(kHeadWidth, '\0');
        result.stream.append(head) += delimiters.element;
        result.stream.append(std::to_string(i + 1)) += delimiters.terminator;
    }
    return result;
}

std::vector<LocatedRecord> cutLoopText(std::string_view loopText, const Delivery& numbered) {
    const char element = numbered.delimiters[0];
    const char terminator = numbered.delimiters[2];
    std::vector<LocatedRecord> located;
    while (!loopText.empty()) {
        const std::size_t end = std::min(loopText.find(terminator), loopText.size());
        const std::string_view line = loopText.substr(0, end);
        const std::size_t loop = std::min(line.find(element), line.size() - 1) + 1;
        const std::size_t last = line.rfind(element);
        const auto number = last != line.npos && last >= loop ? numberOf(line.substr(last + 1)) : std::nullopt;
        if (!number || *number == 0 || *number > numbered.records.size()) {
            throw Failure("the library's list of located segments cannot be read");
        }
        located.push_back({*number, std::string(line.substr(loop, last - loop))});
        loopText.remove_prefix(std::min(end + 1, loopText.size()));
    }
    return located;
}

}  // namespace edicheck
