// The search over located lines.
#include "rules/seglistsearch.h"

#include "common/text.h"
#include "rules/seglists.h"

SegListSearch::SegListSearch(SegLists* searchedList, char const* searchedText) : list(searchedList) {
    copyText(key, searchedText, keyLength);
}

SegListSearch::~SegListSearch() = default;

int SegListSearch::FindNext(int last) {
    int const first = cursor + 1;
    int const limit = last == -1 ? list->count : last + 1;
    cursor = -1;
    if (first > list->count || first < 0) return -1;
    int const type = GetType();
    for (int line = first; line < limit; ++line) {
        int const result = compareLine((*list)[line], type);
        if (result == 0) continue;
        if (result == 1) cursor = line;
        break;
    }
    return cursor;
}

// The field is chosen by the type alone; another type than the three compares nothing.
int SegListSearch::compareLine(SegListInfo const& line, int type) {
    switch (type) {
        case segmentSearch:
            return Compare(line.segmentId, key);
        case loopSearch:
        case notLoopSearch:
            return Compare(line.loopId, key);
        default:
            return 0;
    }
}

int SegListSegmentSearch::GetType() {
    return segmentSearch;
}

int SegListSegmentSearch::Compare(char const* field, char const* searched) {
    return std::strncmp(field, searched, keyLength) == 0;
}

int SegListLoopSearch::GetType() {
    return loopSearch;
}

int SegListLoopSearch::Compare(char const* field, char const* searched) {
    return std::strncmp(field, searched, keyLength) == 0;
}

int SegListNotLoopSearch::GetType() {
    return notLoopSearch;
}

int SegListNotLoopSearch::Compare(char const* field, char const* searched) {
    return std::strncmp(field, searched, keyLength) != 0;
}
