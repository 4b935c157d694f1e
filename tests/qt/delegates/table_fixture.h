#pragma once

#include <vrn/base/any_predicates.h>
#include <vrn/qt/cell_data.h>
#include <vrn/qt/combo_item_delegate.h>
#include <vrn/qt/double_edit_validator.h>
#include <vrn/qt/integer_validator.h>
#include <vrn/qt/multi_edit_enum_box.h>

#include <boost/make_shared.hpp>

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPointer>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>
#include <QVBoxLayout>

namespace vrn::test {

inline QVariant cellValue(const boost::any& value)
{
    return QVariant::fromValue<boost::any>(value);
}

inline boost::any valueAt(const QModelIndex& index)
{
    return index.data(vrn::qt::EditRole).value<boost::any>();
}

/// Takes whole numbers from 0 to 999, and refuses an empty text.
inline vrn::qt::IValidator::pointer wholeNumbers()
{
    return boost::make_shared<vrn::qt::IntegerValidator<int>>(0, 999, false);
}

inline void fillWithSteels(vrn::qt::MultiEditEnumBox& box, const QModelIndex& /*index*/)
{
    box.setValues({{QStringLiteral("S235"), 235}, {QStringLiteral("S275"), 275},
        {QStringLiteral("S355"), 355}});
}

/// Cells of the value 235, watched by a model tester.
class CellModel : public QStandardItemModel
{
public:
    CellModel(int rows, int columns)
        : QStandardItemModel(rows, columns)
    {
        for (int row = 0; row < rows; ++row) {
            for (int column = 0; column < columns; ++column)
                put(row, column, 235, QStringLiteral("S235"));
        }
    }

    void put(int row, int column, const boost::any& value, const QString& text)
    {
        setData(index(row, column), text, vrn::qt::DisplayRole);
        setData(index(row, column), cellValue(value), vrn::qt::EditRole);
    }

private:
    QAbstractItemModelTester m_tester{this, QAbstractItemModelTester::FailureReportingMode::QtTest};
};

/// A window with a table and a field below it.
class TableWindow
{
public:
    TableWindow()
    {
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(view);
        layout->addWidget(elsewhere);
        view->setModel(model);
        window.resize(400, 300);
    }

    void show()
    {
        window.show();
        window.activateWindow();
        // Without a screen, the window is active after this; waiting for it takes a while.
        QCoreApplication::processEvents();
        QVERIFY(QTest::qWaitForWindowActive(&window));
    }

    QModelIndex index(int row, int column) const { return model->index(row, column); }

    /// The editor that opens in a cell; null if none does.
    QWidget* open(int row, int column)
    {
        const QModelIndex cell = index(row, column);
        view->setCurrentIndex(cell);
        view->setFocus();
        QTest::keyClick(view, Qt::Key_F2);
        return view->indexWidget(cell);
    }

    boost::any value(int row, int column) const { return valueAt(index(row, column)); }

    QWidget window;
    QPointer<CellModel> model = new CellModel(4, 3);
    QPointer<QTableView> view = new QTableView;
    QLineEdit* elsewhere = new QLineEdit;
    std::unique_ptr<CellModel> owned{model};
};

/// What is left to the event loop, also what is to be deleted.
inline void settle()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

} // namespace vrn::test
