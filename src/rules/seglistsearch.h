// The search over located lines: a small object on the stack that holds a key and a cursor and walks forward.
#pragma once

class SegLists;
struct SegListInfo;

/// What GetType() answers: it selects the field of a line that is compared with the key.
enum SearchType { segmentSearch = 1, loopSearch = 2, notLoopSearch = 3 };

class SegListSearch {
public:
    static constexpr int keyLength = 128;

    int cursor = -1;      // the line after which FindNext looks; -1 before the first
    char key[keyLength];  // compared by at most its 128 characters
    SegLists* list;       // borrowed

    SegListSearch(SegLists* searchedList, char const* searchedText);
    virtual ~SegListSearch();

    virtual int GetType() = 0;
    /// 1 if a line with this field is a hit, else 0.
    virtual int Compare(char const* field, char const* searched) = 0;

    /// The next hit behind the cursor, no further than line `last`, which is searched too; -1 means to the end. Leaves
    /// the cursor on the hit. Answers -1 at a miss and resets the cursor, so that callers stop at the first -1.
    int FindNext(int last);

private:
    int compareLine(SegListInfo const& line, int type);
};

class SegListSegmentSearch : public SegListSearch {
public:
    using SegListSearch::SegListSearch;
    int GetType() override;
    int Compare(char const* field, char const* searched) override;
};

class SegListLoopSearch : public SegListSearch {
public:
    using SegListSearch::SegListSearch;
    int GetType() override;
    int Compare(char const* field, char const* searched) override;
};

class SegListNotLoopSearch : public SegListSearch {
public:
    using SegListSearch::SegListSearch;
    int GetType() override;
    int Compare(char const* field, char const* searched) override;
};
