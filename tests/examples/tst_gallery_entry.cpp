#include <vrn/qt/simple_line_edit.h>

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>

#include "gallery_page_test.h"
#include "support/table.h"

using namespace vrn::test;
using vrn::qt::SimpleLineEdit;

// Drives the page of entries by keys of the X server.
class TestGalleryEntry : public GalleryPageTest
{
    Q_OBJECT

public:
    TestGalleryEntry()
        : GalleryPageTest("entry")
    {}

private Q_SLOTS:
    void whatIsTypedIsSaidAtOnce_data()
    {
        columns<QString, QString, QStringList>("field", "typed", "labels");
        row("feet and inches", "Span, 0.1 to 40 m", "1'-0\"",
            QStringList({"{1001, 0.3048}", "1 ft", ""}));
        row("a sum", "Section height", "30 cm + 200 mm",
            QStringList({"{1011, 0.5}", "50 cm", "= 0.500 m"}));
        row("out of the range", "Span, 0.1 to 40 m", "45 m",
            QStringList({"{1001, 40}", "45 m", "above 40.000 m: becomes 40.000 m"}));
        row("out of a range that refuses", "Bolts, 1 to 100, not beyond", "101",
            QStringList({"refused", "", "1 to 100"}));
        row("another kind", "Span, 0.1 to 40 m", "12 kN",
            QStringList({"refused", "", "kN is a force; a length is wanted: m, cm, mm, ft, in"}));
        row("unfinished", "Normal force", "12 k",
            QStringList({"refused", "", QString::fromUtf8("\u2026 kN, kip")}));
    }
    void whatIsTypedIsSaidAtOnce()
    {
        QFETCH(QString, field);
        QFETCH(QString, typed);
        QFETCH(QStringList, labels);
        auto* edit = find<SimpleLineEdit>(field);
        focus(edit->edit());
        replaceText(typed);
        QTRY_COMPARE(edit->edit()->text(), typed);
        QTRY_COMPARE(labelsBeside(edit), labels);
    }

    void aUnitIsChosenByKeys()
    {
        auto* edit = find<SimpleLineEdit>("Normal force");
        focus(edit->edit());
        replaceText("12 k");
        QTRY_VERIFY(
            edit->findChild<QListWidget*>() && edit->findChild<QListWidget*>()->isVisible());
        x11::press({"Down", "Down", "Return"});
        QTRY_COMPARE(edit->edit()->text(), QString("12 kip"));
        x11::press({"Return"});
        QTRY_COMPARE(edit->edit()->text(), QString("53.4 kN"));
    }

private:
    static QStringList labelsBeside(const QWidget* control)
    {
        QMap<int, QString> texts;
        const auto labels = control->parentWidget()->findChildren<QLabel*>(
            QString(), Qt::FindDirectChildrenOnly);
        for (const QLabel* label : labels) {
            if (qAbs(label->geometry().center().y() - control->geometry().center().y()) < 5)
                texts[label->x()] = label->text();
        }
        return texts.values();
    }
};

VRN_GALLERY_TEST(TestGalleryEntry)
#include "tst_gallery_entry.moc"
