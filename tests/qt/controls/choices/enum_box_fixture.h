#pragma once

#include <vrn/base/any_predicates.h>
#include <vrn/companion_qt/combo_box.h>
#include <vrn/qt/integer_validator.h>
#include <vrn/qt/multi_edit_enum_box.h>
#include <vrn/qt/multi_edit_line_edit.h>
#include <vrn/qt/varies_string.h>

#include <boost/make_shared.hpp>

#include <QAbstractItemView>
#include <QLineEdit>
#include <QTest>

namespace vrn::test {

/// Three steels and their yield strength.
inline vrn::qt::NamedValueList steels()
{
    return {{QStringLiteral("S235"), 235}, {QStringLiteral("S275"), 275},
        {QStringLiteral("S355"), 355}};
}

/// Takes 0 to 999, refuses an empty text.
inline vrn::qt::IValidator::pointer strength()
{
    return boost::make_shared<vrn::qt::IntegerValidator<int>>(0, 999, false);
}

inline VRN_QT4_ComboBox& comboOf(const QWidget& box)
{
    return *box.findChild<VRN_QT4_ComboBox*>();
}

inline QString textOf(const QWidget& box)
{
    return comboOf(box).currentText();
}

inline QStringList rowsOf(const QWidget& box)
{
    QStringList rows;
    for (int row = 0; row < comboOf(box).count(); ++row)
        rows << comboOf(box).itemText(row);
    return rows;
}

/// What a user does: opens the list, goes to the row, and presses Enter.
inline void pick(QWidget& box, int row)
{
    VRN_QT4_ComboBox& combo = comboOf(box);
    combo.showPopup();
    combo.view()->setCurrentIndex(combo.model()->index(row, 0));
    QTest::keyClick(combo.view(), Qt::Key_Return);
}

/// Replaces the text in the edit as a user does: selects it all and types. The keys go to
/// the combo box, which passes them on to its edit.
inline void type(QWidget& box, const QString& text)
{
    comboOf(box).lineEdit()->selectAll();
    QTest::keyClicks(&comboOf(box), text);
}

inline void pressEnter(QWidget& box)
{
    QTest::keyClick(&comboOf(box), Qt::Key_Return);
}

inline void showActive(QWidget& window)
{
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
}

} // namespace vrn::test
