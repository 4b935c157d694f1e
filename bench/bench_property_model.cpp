#include <memory>

#include "comparison.h"
#include "property_project.h"

namespace bench {

void addPropertyModelComparisons()
{
    const auto usual = std::make_shared<Project>(10000);
    const auto large = std::make_shared<Project>(100000);
    const auto undone = std::make_shared<Project>(10000);
    for (const auto& project : {usual, large, undone})
        project->readAfterChanges();
    undone->edit();
    add({"property model/read 40 properties of 10000 objects", "40 bare loops", 3.0,
        [=] { usual->read(); }, [=] { usual->readBare(); }});
    add({"property model/read 40 properties of 100000 objects", "40 bare loops", 3.0,
        [=] { large->read(); }, [=] { large->readBare(); }});
    add({"property model/read 100000 objects at once", "the same, 1000 at a time", 1.3,
        [=] { large->read(); }, [=] { large->readInParts(1000); }});
    add({"property model/edit 10000 objects", "bare loops that keep, set and read back", 2.0,
        [=] { usual->edit(); }, [=] { usual->editBare(); }});
    add({"property model/undo it", "the same loops", 2.0, [=] { undone->undoAndRedo(); },
        [=] { undone->editBare(); }});
}

} // namespace bench
