#include <vrn/qt/multi_edit_file_picker.h>

#include <vrn/assert/smart_assert.h>
#include <vrn/companion_qt/connect.h>
#include <vrn/qt/multi_edit_line_edit.h>
#include <vrn/qt/string_edit_validator.h>

#include <boost/make_shared.hpp>

#include <QBoxLayout>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QIcon>
#include <QPixmap>
#include <QPointer>
#include <QToolButton>

#include "controls/parts/alive_p.h"
#include "controls/selection/varies_tool_tip_p.h"

#include <filesystem>
#include <system_error>

namespace vrn::qt {
namespace {

constexpr std::size_t maxPathLength = 260;

// clang-format off
const char* const openFolderIcon[] = {
    "16 16 5 1",
    "# c #000000",
    "c c #808000",
    ". c None",
    "b c #ffff00",
    "a c #ffffff",
    "................",
    "..........###...",
    ".........#...#.#",
    "..............##",
    "..###........###",
    ".#aba#######....",
    ".#babababab#....",
    ".#ababababa#....",
    ".#baba##########",
    ".#aba#ccccccccc#",
    ".#ba#ccccccccc#.",
    ".#a#ccccccccc#..",
    ".##ccccccccc#...",
    ".###########....",
    "................",
    "................",
};
// clang-format on

boost::shared_ptr<IValidator> createValidator()
{
    auto validator = boost::make_shared<StringEditValidator>(maxPathLength);
    validator->setStorageType(StringEditValidator::StorageTypeUtf8String);
    return validator;
}

bool isSeparator(QChar c)
{
    return c == QLatin1Char('/') || c == QLatin1Char('\\');
}

// The length of "/" or "C:/" at the beginning of a path.
int rootLength(const QString& path)
{
    if (!path.isEmpty() && isSeparator(path.at(0)))
        return 1;
    const bool hasDrive = path.size() > 2 && path.at(1) == QLatin1Char(':')
        && isSeparator(path.at(2));
    return hasDrive ? 3 : 0;
}

// The part before the last separator of either kind.
QString parentOf(const QString& path)
{
    auto end = path.size();
    while (end > 0 && !isSeparator(path.at(end - 1)))
        --end;
    while (end > rootLength(path) && isSeparator(path.at(end - 1)))
        --end;
    return path.left(end);
}

// Throws if the file system cannot tell. The path is made from UTF-8: a wide string goes
// through the C library's locale, which throws for letters that it lacks.
bool exists(const QString& path)
{
    const auto file = std::filesystem::u8path(path.toStdString());
    std::error_code error;
    const bool found = std::filesystem::exists(file, error);
    if (error) // Standard libraries differ in the name of the operation.
        throw std::filesystem::filesystem_error("exists", file, error);
    return found;
}

QString titleOf(TypeofPath type)
{
    switch (type) {
    case TypeofPathFile:
        return MultiEditFilePicker::tr("Open File");
    case TypeofPathFiles:
        return MultiEditFilePicker::tr("Open Files");
    case TypeofPathFolder:
    case TypeofPathFileInFolder:
        return MultiEditFilePicker::tr("Open Folder");
    }
    return QString();
}

// Asks as QFileDialog::getOpenFileName() and its like do. Those keep the dialog on the stack as
// a child of `parent`, which may be destroyed while the dialog is open.
QStringList pick(
    QWidget* parent, TypeofPath type, const QString& initial, const QString& filter = QString())
{
    const bool isForFiles = type == TypeofPathFile || type == TypeofPathFiles;
    auto* dialog = new QFileDialog(parent, titleOf(type), initial, filter);
    const QPointer<QFileDialog> alive(dialog);
    if (isForFiles) {
        dialog->setFileMode(
            type == TypeofPathFile ? QFileDialog::ExistingFile : QFileDialog::ExistingFiles);
    } else {
        dialog->setFileMode(QFileDialog::Directory);
        dialog->setOption(QFileDialog::ShowDirsOnly);
    }
    const bool accepted = dialog->exec() == QDialog::Accepted;
    const QStringList picked = accepted && alive ? dialog->selectedFiles() : QStringList();
    delete alive;
    return picked;
}

} // namespace

MultiEditFilePicker::MultiEditFilePicker(QWidget* parent, TypeofPath type)
    : QWidget(parent)
    , m_edit(MultiEditLineEdit::create(this, QString(), createValidator(), 0, ExpandHorizontal))
    , m_btn(new QToolButton(this))
    , m_type(type)
{
    auto* layout = new QBoxLayout(QBoxLayout::LeftToRight);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    setLayout(layout);

    m_edit->setMinimumWidthFactor(0.3);
    // The text of a new picker is valid, so that the user can pick at once.
    m_edit->setValue(std::string());
    layout->addWidget(m_edit);

    m_btn->setIcon(QIcon(QPixmap(openFolderIcon)));
    m_btn->setAccessibleName(titleOf(type));
    m_btn->setFocusPolicy(Qt::StrongFocus);
    layout->addWidget(m_btn);

    vrn_connect(m_btn, &QToolButton::clicked, this, &MultiEditFilePicker::onPick);
    vrn_connect(m_edit, &MultiEditLineEdit::valueChanged, this, &MultiEditFilePicker::valueChanged);
    vrn_connect(m_edit, &QObject::destroyed, this, [this] { m_edit = nullptr; });
    setFocusProxy(m_edit);
    setFocusPolicy(m_edit->focusPolicy());
    new detail::VariesToolTip(this);
}

MultiEditFilePicker::~MultiEditFilePicker()
{
    detail::disposeOf(m_btn);
    detail::disposeOf(m_edit);
}

boost::any MultiEditFilePicker::getValue() const
{
    if (!m_edit || dataVaries())
        return boost::any();
    return m_edit->getValue();
}

void MultiEditFilePicker::reset()
{
    if (m_edit)
        m_edit->reset();
}

void MultiEditFilePicker::readValue(const boost::any& value)
{
    if (m_edit)
        m_edit->readValue(value);
}

bool MultiEditFilePicker::dataVaries() const
{
    return m_edit && m_edit->dataVaries();
}

boost::any MultiEditFilePicker::getCurrentValue() const
{
    return dataVaries() ? boost::any() : getValue();
}

void MultiEditFilePicker::setValue(const boost::any& value)
{
    if (m_edit)
        m_edit->setValue(value);
}

void MultiEditFilePicker::forceVaries()
{
    if (m_edit)
        m_edit->forceVaries();
}

void MultiEditFilePicker::setCanBeSaved(const std::string& /*id*/) {}

void MultiEditFilePicker::onPick()
{
    VRN_ASSERT(m_edit);
    if (!m_edit)
        return;
    QString initial = QString::fromStdString(
        boost::any_cast<std::string>(m_edit->getCurrentValue()));
    const QString folder = parentOf(initial);
    const QString filter = QString::fromStdString(m_filter);
    const detail::Alive alive(this, m_btn);
    QString result;
    switch (m_type) {
    case TypeofPathFile:
    case TypeofPathFiles: {
        if (!QFileInfo::exists(initial))
            initial = QDir::currentPath();
        const QStringList names = pick(m_edit, m_type, initial, filter);
        if (names.isEmpty())
            break;
        result = m_type == TypeofPathFile ? names.front()
                                          : QString::number(names.size())
                + QStringLiteral(" files in ") + parentOf(names.front());
        break;
    }
    case TypeofPathFolder:
        // The folder may no longer exist: Qt then opens its parent, with the name in the
        // edit. Qt takes an empty name for the folder visited last; here it means the current
        // one.
        result = pick(m_edit, m_type, folder.isEmpty() ? QDir::currentPath() : folder).value(0);
        break;
    case TypeofPathFileInFolder: {
        if (!exists(folder))
            initial = QDir::currentPath();
        // The name of a file is left out: Qt would offer it as a folder.
        const QFileInfo start(initial);
        const QString picked =
            pick(m_edit, m_type, start.isDir() ? initial : start.absolutePath()).value(0);
        if (alive) // Even if the user chose nothing.
            result = picked + QLatin1Char('/') + QString::fromStdString(m_fileName);
        break;
    }
    }
    if (alive && !result.isEmpty())
        setValue(result.toStdString());
    if (alive)
        Q_EMIT valueChanged();
}

} // namespace vrn::qt
