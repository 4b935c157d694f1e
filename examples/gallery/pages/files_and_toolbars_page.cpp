#include "pages/files_and_toolbars_page.h"

#include <vrn/environment/environment.h>
#include <vrn/qt/assign_style.h>
#include <vrn/qt/layouters.h>
#include <vrn/qt/toolbar.h>

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

#include "value_label.h"
#include "value_text.h"

#include <stdexcept>
#include <vector>

namespace gallery {
namespace {

using namespace vrn::qt;

// Groups of buttons; each is a bit of a mask.
constexpr unsigned int files = 1;
constexpr unsigned int editing = 2;

std::string styleFile()
{
    return vrn::app::Environment::instance()
        .getPaths(std::string())
        .find(L"gallery.qss")
        .u8string();
}

} // namespace

FilesAndToolbarsPage::FilesAndToolbarsPage(QWidget* parent)
    : QWidget(parent)
    , m_lastClick(new QLabel(tr("Nothing clicked yet.")))
{
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(createPickers());
    layout->addWidget(createToolbars());
    layout->addWidget(createStyle());
    layout->addStretch(1);
}

QWidget* FilesAndToolbarsPage::createPickers()
{
    auto* box = new QGroupBox(tr("File pickers"));
    PropertyGridLayouter form;
    form.onCreate(box);
    form.onAdd(new QLabel(tr("<b>Path</b>")));
    std::vector<MultiEditFilePicker*> pickers;
    const auto add = [&](const QString& caption, TypeofPath type) {
        pickers.push_back(createPicker(type));
        form.onAdd(pickers.back(), caption);
    };
    add(tr("F&ile"), TypeofPathFile);
    add(tr("Fi&les"), TypeofPathFiles);
    add(tr("F&older"), TypeofPathFolder);
    add(tr("File in a fol&der"), TypeofPathFileInFolder);
    form.onFinish();

    QGridLayout* grid = form.layout();
    grid->setHorizontalSpacing(18);
    grid->setColumnMinimumWidth(1, fontMetrics().averageCharWidth() * 50);
    grid->setColumnMinimumWidth(2, fontMetrics().averageCharWidth() * 30);
    grid->addWidget(new QLabel(tr("<b>Value</b>")), 0, 2);
    grid->addWidget(new QLabel(tr("<b>Signals</b>")), 0, 3);
    int row = 0;
    for (MultiEditFilePicker* picker : pickers)
        addValueColumns(grid, ++row, picker);
    return box;
}

MultiEditFilePicker* FilesAndToolbarsPage::createPicker(TypeofPath type)
{
    auto* picker = new MultiEditFilePicker(this, type);
    picker->setFilter("Style sheets (*.qss);;All files (*)");
    picker->setFileName("gallery.qss");
    return picker;
}

void FilesAndToolbarsPage::addValueColumns(QGridLayout* grid, int row, MultiEditFilePicker* picker)
{
    auto* value = new ValueLabel;
    auto* signalCount = new ValueLabel;
    signalCount->setNum(0);
    const auto refresh = [=] { value->setText(valueText(picker->getCurrentValue())); };
    connect(picker, &MultiEditFilePicker::valueChanged, this, [=] {
        refresh();
        signalCount->setNum(signalCount->text().toInt() + 1);
    });
    refresh();
    grid->addWidget(value, row, 2);
    grid->addWidget(signalCount, row, 3);
}

QWidget* FilesAndToolbarsPage::createToolbars()
{
    auto* row = new Toolbar(nullptr, ExpandHorizontal);
    auto* column = new Toolbar(nullptr, ExpandVertical);
    auto* canEdit = new QCheckBox(tr("Buttons of the group \"&editing\" are enabled"));
    canEdit->setObjectName(QStringLiteral("canEdit"));
    canEdit->setChecked(true);
    for (Toolbar* toolbar : {row, column}) {
        fill(toolbar);
        connect(canEdit, &QCheckBox::toggled, toolbar,
            [toolbar](bool checked) { toolbar->setButtonsEnabled(checked, editing); });
    }

    auto* box = new QGroupBox(tr("Toolbars"));
    auto* grid = new QGridLayout(box);
    grid->setColumnStretch(1, 1);
    grid->setHorizontalSpacing(18);
    grid->addWidget(column, 0, 0, 4, 1);
    grid->addWidget(row, 0, 1);
    grid->addWidget(canEdit, 1, 1);
    grid->addWidget(m_lastClick, 2, 1);
    grid->setRowStretch(3, 1);
    return box;
}

void FilesAndToolbarsPage::fill(Toolbar* toolbar)
{
    const auto report = [this](const QString& text) {
        return [this, text] { m_lastClick->setText(tr("Last click: %1").arg(text)); };
    };
    const auto icon = [this](QStyle::StandardPixmap name) { return style()->standardIcon(name); };

    toolbar->addButton(
        "open", icon(QStyle::SP_DialogOpenButton), tr("Open"), report(tr("Open")), files);
    toolbar->addButton(
        "save", icon(QStyle::SP_DialogSaveButton), tr("Save"), report(tr("Save")), files | editing);
    toolbar->addSpacing(9);
    toolbar->addLabel(tr("Bars:"), tr("What the next two buttons change"));
    toolbar->addSpacing(4);
    toolbar->addButtonWithText("add", tr("+"), tr("Adds a bar."), report(tr("+")), editing);
    toolbar->addButtonWithText("remove", tr("-"), tr("Removes a bar."), report(tr("-")), editing);
    toolbar->addSpacing(9);
    toolbar->addButtonWithIconAndText("trash", icon(QStyle::SP_TrashIcon), tr("Empty"),
        tr("Empties the waste bin."), report(tr("Empty")), editing);
    toolbar->addButtonWithText(
        "throw", tr("Throw"), tr("Calls a function that throws."),
        [] { throw std::runtime_error("The stiffness matrix is singular."); }, 0);
}

QWidget* FilesAndToolbarsPage::createStyle()
{
    auto* sample = new QFrame;
    sample->setObjectName(QStringLiteral("sample"));
    auto* sampleLayout = new QHBoxLayout(sample);
    sampleLayout->addWidget(new QLabel(tr("A sample:")));
    auto* edit = new QLineEdit(tr("some text"));
    edit->setAccessibleName(tr("Sample text"));
    sampleLayout->addWidget(edit);
    sampleLayout->addWidget(new QPushButton(tr("A button")));
    auto* disabled = new QPushButton(tr("A disabled one"));
    disabled->setEnabled(false);
    sampleLayout->addWidget(disabled);

    auto* buttons = new Toolbar(nullptr, ExpandHorizontal);
    buttons->addButtonWithText(
        "applyStyle", tr("Apply gallery.qss"), tr("Reads the style sheet from its file."),
        [=] { assign_style(sample, styleFile()); }, 0);
    buttons->addButtonWithText(
        "removeStyle", tr("Remove"), tr("Takes the style sheet away."),
        [=] { sample->setStyleSheet(QString()); }, 0);

    auto* box = new QGroupBox(tr("Style sheet from a file"));
    auto* layout = new QVBoxLayout(box);
    layout->addWidget(buttons);
    layout->addWidget(sample);
    return box;
}

} // namespace gallery
