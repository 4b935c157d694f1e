#include <vrn/qt/double_edit_validator.h>
#include <vrn/qt/simple_line_edit.h>

#include <QApplication>
#include <QDoubleValidator>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

#include <memory>

#include "comparison.h"

namespace bench {
namespace {

using namespace vrn::qt;

constexpr int formRows = 200;

// Types a number of ten characters again and again. Each key is painted before the next.
void typeThousandKeys(QLineEdit* edit)
{
    static const QString number = QStringLiteral("1234567.89");
    edit->activateWindow();
    edit->setFocus();
    QCoreApplication::processEvents();
    if (!edit->hasFocus())
        qFatal("the edit has no focus");
    for (int key = 0; key < 1000; ++key) {
        const int position = key % number.size();
        if (position == 0)
            edit->selectAll();
        QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, number.mid(position, 1));
        QCoreApplication::sendEvent(edit, &press);
        QCoreApplication::processEvents();
    }
    if (edit->text() != number)
        qFatal("the keys did not arrive");
}

template <typename Widget>
std::shared_ptr<Widget> shown(Widget* widget)
{
    widget->resize(200, 30);
    widget->show();
    widget->activateWindow();
    widget->setFocus();
    QCoreApplication::processEvents();
    return std::shared_ptr<Widget>(widget);
}

QString caption(int row)
{
    return QStringLiteral("Property %1").arg(row);
}

void showAndPaint(QWidget& form)
{
    form.show();
    QCoreApplication::processEvents();
}

void formOfSimpleLineEdits()
{
    QWidget form;
    auto* layout = new QVBoxLayout(&form);
    const auto validator = boost::shared_ptr<IValidator>(new DoubleEditValidator);
    for (int row = 0; row < formRows; ++row) {
        layout->addWidget(
            SimpleLineEdit::create(&form, caption(row), validator, 0, ExpandHorizontal));
    }
    showAndPaint(form);
}

void formOfPlainLineEdits()
{
    QWidget form;
    auto* layout = new QGridLayout(&form);
    for (int row = 0; row < formRows; ++row) {
        layout->addWidget(new QLabel(caption(row)), row, 0);
        layout->addWidget(new QLineEdit, row, 1);
    }
    showAndPaint(form);
}

} // namespace

void addLineEditComparisons()
{
    const auto simple = shown(
        SimpleLineEdit::create(nullptr, QString(), new DoubleEditValidator, 0, ExpandHorizontal));
    const auto plain = shown(new QLineEdit);
    plain->setValidator(new QDoubleValidator(plain.get()));
    add({"line edit/1000 keystrokes", "QLineEdit with a QDoubleValidator", 1.3,
        [simple] { typeThousandKeys(simple->edit()); },
        [plain] { typeThousandKeys(plain.get()); }});

    add({"line edit/form of 200", "QLabel and QLineEdit", 1.6, &formOfSimpleLineEdits,
        &formOfPlainLineEdits});
}

} // namespace bench
