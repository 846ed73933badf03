// Elements: splits a delimited text in place and hands out its fields.
#pragma once

class Elements {
public:
    char* text = nullptr;  // borrowed from whoever owns the buffer; NUL-terminated behind `length` bytes
    int length = 0;        // bytes of `text` to work on
    int split = 0;         // nonzero once the buffer has been split
    int count = 0;         // delimiters, and one more if the first field is not empty; 0 before the split
    char delimiter[2] = {'*', '\0'};

    /// The field at `index`, which ends at the next NUL; null where there is none. The first call splits the buffer for
    /// good: each delimiter becomes a NUL. A text that ends with a delimiter has an empty last field, whose address
    /// lies behind the `length` bytes.
    ///
    /// Because of what `count` counts, a walk from 0 while below `count` loses the last field of a text that begins
    /// with a delimiter. The lists of rule records rely on it: "*X" holds one field, an empty one.
    char* GetElement(int index);

    /// The number of fields that a walk from 0 visits: `count`, after the split.
    int fieldCount();

private:
    // Where the field of the last answer begins: a walk over the fields, in either direction, costs what it passes and
    // does not begin at the start of the text each time.
    int lastIndex = 0;
    int lastOffset = 0;

    void splitText();
    bool moveTo(int index);
};
