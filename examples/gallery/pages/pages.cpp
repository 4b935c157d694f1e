#include "page.h"

#include "pages/editor2d_page.h"
#include "pages/entry_page.h"
#include "pages/enum_boxes_page.h"
#include "pages/files_and_toolbars_page.h"
#include "pages/groups_page.h"
#include "pages/hints_page.h"
#include "pages/line_edits_page.h"
#include "pages/multi_edit_page.h"
#include "pages/properties_page.h"
#include "pages/quantities_page.h"
#include "pages/tables_page.h"

namespace gallery {
namespace {

template <typename PageWidget>
QWidget* make(QWidget* parent)
{
    return new PageWidget(parent);
}

} // namespace

const std::vector<Page>& pages()
{
    static const std::vector<Page> all = {
        {QStringLiteral("line-edits"), QStringLiteral("Line edits"), &make<LineEditsPage>},
        {QStringLiteral("quantities"), QStringLiteral("Quantities"), &make<QuantitiesPage>},
        {QStringLiteral("entry"), QStringLiteral("Entry"), &make<EntryPage>},
        {QStringLiteral("multi-edit"), QStringLiteral("Multi-edit"), &make<MultiEditPage>},
        {QStringLiteral("enum-boxes"), QStringLiteral("Enum boxes"), &make<EnumBoxesPage>},
        {QStringLiteral("groups"), QStringLiteral("Groups"), &make<GroupsPage>},
        {QStringLiteral("files-and-toolbars"), QStringLiteral("Files and toolbars"),
            &make<FilesAndToolbarsPage>},
        {QStringLiteral("hints"), QStringLiteral("Hints"), &make<HintsPage>},
        {QStringLiteral("properties"), QStringLiteral("Properties"), &make<PropertiesPage>},
        {QStringLiteral("tables"), QStringLiteral("Tables"), &make<TablesPage>},
        {QStringLiteral("editor2d"), QStringLiteral("2D editor"), &make<Editor2dPage>},
    };
    return all;
}

} // namespace gallery
