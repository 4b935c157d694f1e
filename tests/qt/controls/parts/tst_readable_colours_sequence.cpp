#include <QApplication>
#include <QLineEdit>
#include <QScopeGuard>
#include <QVBoxLayout>

#include "controls/parts/readable_colours_p.h"
#include "support/contrast.h"
#include "support/random_sequence.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <array>

using vrn::qt::detail::ReadableColours;
using vrn::test::contrast;

namespace {

constexpr std::array groups{QPalette::Active, QPalette::Inactive, QPalette::Disabled};

const QString theirs = "QLineEdit { selection-background-color: #00ff00; }";
const QString whiteGround = "QLineEdit { border:0; background-color:white; }";

QPalette theme(const QColor& window, const QColor& base, const QColor& text)
{
    QPalette palette(window, window);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::Highlight, base.lighter());
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, text);
    return palette;
}

QPalette anyTheme(unsigned argument)
{
    switch (argument % 4) {
    case 0:
        return QPalette();
    case 1:
        return theme(QColor(240, 240, 240), Qt::white, Qt::black);
    case 2:
        return theme(QColor(50, 50, 50), QColor(30, 30, 30), QColor(240, 240, 240));
    default:
        return theme(QColor(20, 30, 90), QColor(10, 20, 60), QColor(220, 230, 250));
    }
}

// Qt by itself then leaves an outdated palette to a widget that moves.
bool arePropagated()
{
    return QCoreApplication::testAttribute(Qt::AA_UseStyleSheetPropagationInWidgetStyles);
}

// What an application sets on one edit. The black and white of the library are not among it.
QPalette anyOwn(unsigned argument)
{
    QPalette palette;
    switch (argument % 5) {
    case 0:
        break;
    case 1:
        palette.setColor(QPalette::Base, QColor(255, 255, 190));
        break;
    case 2:
        palette.setColor(QPalette::Text, QColor(20, 60, 120));
        break;
    case 3:
        palette.setColor(QPalette::Highlight, Qt::magenta);
        break;
    default:
        palette = theme(QColor(60, 10, 10), QColor(40, 5, 5), QColor(250, 220, 220));
    }
    return palette;
}

// With Qt 6, windows hear of it through the event loop.
void setApplicationPalette(const QPalette& palette)
{
    QApplication::setPalette(palette);
    QCoreApplication::processEvents();
}

// An edit with style sheets of the library or the application, and a twin without, to which
// the application does the same otherwise.
class StyledEdit : public vrn::test::Subject
{
public:
    StyledEdit()
        : m_edit(new QLineEdit)
        , m_twin(new QLineEdit)
        , m_colours(new ReadableColours(m_edit))
    {
        setApplicationPalette(anyTheme(1));
        auto* layout = new QVBoxLayout(&m_window);
        for (QWidget*& panel : m_panels) {
            panel = new QWidget;
            layout->addWidget(panel);
            new QVBoxLayout(panel);
        }
        moveTo(0);
    }

    static QStringList actions()
    {
        return {"black", "red", "padding", "white ground", "no style", "read-only", "editable",
            "application's palette", "window's palette", "panel's palette", "own palette", "show",
            "hide", "move", "paint", "disable", "enable", "their style"};
    }

    QString perform(int action, unsigned argument) override
    {
        const QString name = actions().at(action);
        if (name == "black")
            m_colours->setStyleSheet("QLineEdit { color: #000; }");
        else if (name == "red")
            m_colours->setStyleSheet("QLineEdit { color: #e61414; }");
        else if (name == "padding")
            m_colours->setStyleSheet("QLineEdit { padding-right: 20px; }");
        else if (name == "white ground")
            m_colours->setStyleSheet(whiteGround);
        else if (name == "no style")
            m_edit->setStyleSheet(QString());
        else if (name == "their style" && hasLook())
            m_edit->setStyleSheet(theirs);
        else if (name == "read-only" || name == "editable")
            m_edit->setReadOnly(name == "read-only");
        else if (name == "application's palette")
            setApplicationPalette(anyTheme(argument % 3 + 1));
        else if (name == "window's palette")
            m_window.setPalette(anyTheme(argument));
        else if (name == "panel's palette")
            m_panels[argument / 4 % 2]->setPalette(anyTheme(argument));
        else if (name == "own palette" && m_edit->styleSheet() != theirs) // Qt would forget it.
            forBoth([&](QLineEdit* edit) { edit->setPalette(anyOwn(argument)); });
        else if (name == "show" || name == "hide")
            m_window.setVisible(name == "show");
        else if (name == "move" && !arePropagated())
            moveTo(argument % 2);
        else if (name == "paint")
            forBoth([](QLineEdit* edit) { edit->grab(); });
        else if (name == "disable" || name == "enable")
            forBoth([&](QLineEdit* edit) { edit->setEnabled(name == "enable"); });
        return difference();
    }

private:
    template <typename Function>
    void forBoth(Function function)
    {
        function(m_edit);
        function(m_twin);
    }

    // Without one, Qt by itself leaves an outdated palette after a style sheet.
    bool hasLook() const { return m_edit->isReadOnly() || !m_edit->styleSheet().isEmpty(); }

    void moveTo(unsigned panel)
    {
        forBoth([&](QLineEdit* edit) { m_panels[panel]->layout()->addWidget(edit); });
    }

    QString difference() const
    {
        for (const QPalette::ColorGroup group : groups) {
            const QString wrong = difference(group);
            if (!wrong.isEmpty())
                return QStringLiteral("group %1: %2").arg(group).arg(wrong);
        }
        return QString();
    }

    QString difference(QPalette::ColorGroup group) const
    {
        const QPalette palette = m_edit->palette();
        const QPalette plain = m_twin->palette();
        const QString sheet = m_edit->styleSheet();
        if (palette.color(group, QPalette::NoRole) != QPalette().color(group, QPalette::NoRole))
            return "a mark is left";
        if (sheet == theirs)
            return QString();
        const QColor text = palette.color(group, QPalette::Text);
        // Before it is shown for the first time, Qt does nothing for its style sheet.
        if (sheet.contains("color") && m_edit->testAttribute(Qt::WA_WState_Polished)) {
            const QColor ground = sheet == whiteGround ? QColor(Qt::white)
                                                       : palette.color(group, QPalette::Base);
            const double ratio = contrast(text, ground);
            if (ratio < (group == QPalette::Disabled ? 2.5 : 4.5))
                return text.name() + " on " + ground.name();
        }
        for (int i = 0; i < QPalette::NColorRoles; ++i) {
            const auto role = static_cast<QPalette::ColorRole>(i);
            const bool isOfStyle = role == QPalette::Text || role == QPalette::WindowText
                || role == QPalette::ButtonText || role == QPalette::Base
                || role == QPalette::Window || role == QPalette::Button;
            const bool isOfReadOnly = m_edit->isReadOnly() && role == QPalette::Base;
            // Qt derives the colour of placeholders from that of the text in its own ways.
            const bool isOfQt = role == QPalette::PlaceholderText || role == QPalette::NoRole;
            if ((sheet.contains("color") && isOfStyle) || isOfReadOnly || isOfQt)
                continue;
            if (palette.color(group, role) != plain.color(group, role)) {
                return QStringLiteral("role %1 is %2 instead of %3")
                    .arg(i)
                    .arg(palette.color(group, role).name(), plain.color(group, role).name());
            }
        }
        return QString();
    }

    QWidget m_window;
    std::array<QWidget*, 2> m_panels{};
    QLineEdit* m_edit;
    QLineEdit* m_twin;
    ReadableColours* m_colours;
};

} // namespace

class TestReadableColoursSequence : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void palettesOfTheApplicationStayItsOwn_data()
    {
        QTest::addColumn<bool>("propagates");
        QTest::newRow("as Qt does it by itself") << false;
        QTest::newRow("where style sheets propagate as palettes do") << true;
    }

    void palettesOfTheApplicationStayItsOwn()
    {
        QFETCH(bool, propagates);
        QCoreApplication::setAttribute(Qt::AA_UseStyleSheetPropagationInWidgetStyles, propagates);
        const auto reset = qScopeGuard([] {
            QCoreApplication::setAttribute(Qt::AA_UseStyleSheetPropagationInWidgetStyles, false);
        });
        vrn::test::runRandomSequences(
            StyledEdit::actions(), [] { return std::make_unique<StyledEdit>(); });
    }
};

VRN_TEST(TestReadableColoursSequence)
#include "tst_readable_colours_sequence.moc"
