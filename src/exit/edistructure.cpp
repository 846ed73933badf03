// The end of a root: the one place that knows all that it owns.
#include "rules/contents.h"
#include "rules/rules.h"
#include "rules/seglists.h"
#include "walk/datasegment.h"
#include "walk/errorinfos.h"

EDI_Structure::~EDI_Structure() {
    delete dataSegment;
    delete errorInfos;
    delete contents;
    delete segLists;
    delete rules;
    std::free(dataCopy);
    while (supersededCopies) {
        SupersededCopy* copy = supersededCopies;
        supersededCopies = copy->next;
        std::free(copy->text);
        delete copy;
    }
    delete identifierBuffer;
    std::free(xmlMessage);
    deleteChildren();
}
