#pragma once

#include <vrn/qt/cppdb_table_view_base.h>
#include <vrn/qt/validators.h>

#include <boost/make_shared.hpp>

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QClipboard>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QMimeData>
#include <QTest>

#include "typed_model.h"

#include <bitset>
#include <functional>
#include <memory>

namespace vrn::test {

/// A validator of a column. It logs its calls, as in "validate 1.5", and runs `before` first.
struct ColumnValidator : public vrn::qt::ForwardValidator
{
    explicit ColumnValidator(vrn::qt::IValidator* validator)
        : ForwardValidator(vrn::qt::IValidator::pointer(validator))
    {}

    bool validate(const QString& text, boost::any& value, const std::bitset<32>& f) override
    {
        note(QStringLiteral("validate ") + text, f);
        return ForwardValidator::validate(text, value, f);
    }

    QString reformat(const boost::any& value, const std::bitset<32>& f) override
    {
        note(QStringLiteral("reformat ") + TypedModel::textOf(value), f);
        return ForwardValidator::reformat(value, f);
    }

    std::function<void()> before;
    QStringList log;
    std::bitset<32> flags;

private:
    void note(const QString& call, const std::bitset<32>& f)
    {
        log << call;
        flags = f;
        if (before)
            before();
    }
};

/// A validator by its letter: n for numbers of three decimals and d for two, or none; t for
/// texts; w for whole numbers; "-" for no validator.
inline boost::shared_ptr<ColumnValidator> makeValidator(QChar kind)
{
    using namespace vrn::qt;
    switch (kind.toLatin1()) {
    case 'n':
    case 'd': {
        auto* number = new DoubleEditValidator(kind == 'n' ? 3 : 2, -1e9, 1e9, true);
        number->setEmptyValueAllowed(true);
        return boost::make_shared<ColumnValidator>(number);
    }
    case 't':
        return boost::make_shared<ColumnValidator>(new StringEditValidator(100000));
    case 'w':
        return boost::make_shared<ColumnValidator>(
            new IntegerValidator<int>(-1000000, 1000000, false));
    default:
        return {};
    }
}

/// The validators of the columns, by letters. There is none for other columns.
class Columns
{
public:
    explicit Columns(const QString& kinds)
    {
        for (const QChar kind : kinds)
            m_validators.push_back(makeValidator(kind));
    }

    vrn::qt::IValidator::pointer operator()(int column) const
    {
        return column < int(m_validators.size()) ? at(column) : nullptr;
    }
    const boost::shared_ptr<ColumnValidator>& at(int column) const
    {
        return m_validators.at(std::size_t(column));
    }

private:
    std::vector<boost::shared_ptr<ColumnValidator>> m_validators;
};

inline void setClipboard(const QString& text)
{
    QApplication::clipboard()->setText(text);
}

inline QString clipboard()
{
    return QApplication::clipboard()->text();
}

inline void press(vrn::qt::detail::CppDbTableViewBase& view, int key,
    Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QKeyEvent event(QEvent::KeyPress, key, modifiers);
    view.keyPressEvent(&event);
}
inline void pressDelete(vrn::qt::detail::CppDbTableViewBase& view)
{
    press(view, Qt::Key_Delete);
}
inline void pressCut(vrn::qt::detail::CppDbTableViewBase& view)
{
    press(view, Qt::Key_X, Qt::ControlModifier);
}
inline void pressCopy(vrn::qt::detail::CppDbTableViewBase& view)
{
    press(view, Qt::Key_C, Qt::ControlModifier);
}
inline void pressPaste(vrn::qt::detail::CppDbTableViewBase& view)
{
    press(view, Qt::Key_V, Qt::ControlModifier);
}

/// Selects the cells that `cells` names, in the order of their names: "0,1" is row 0 and
/// column 1, "0,1:2,2" is a block.
inline void select(QAbstractItemView& view, const QString& cells)
{
    const auto cell = [&view](const QString& name) {
        const QStringList numbers = name.split(QLatin1Char(','));
        return view.model()->index(numbers.value(0).toInt(), numbers.value(1).toInt());
    };
    view.clearSelection();
    for (const QString& block : cells.split(QLatin1Char(' '))) {
        if (block.isEmpty())
            continue;
        const QStringList ends = block.split(QLatin1Char(':'));
        view.selectionModel()->select(
            QItemSelection(cell(ends.first()), cell(ends.last())), QItemSelectionModel::Select);
    }
}

/// A view of a typed model, each with its own tester. The clipboard holds "before".
struct Table
{
    Table(const QString& kinds, const QString& content)
        : columns(kinds)
        , model(content)
        , tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest)
        , view(
              &model, [this](int column) { return columns(column); }, nullptr)
    {
        view.setModel(&model);
        setClipboard(QStringLiteral("before"));
    }

    Columns columns;
    TypedModel model;
    QAbstractItemModelTester tester;
    vrn::qt::detail::CppDbTableViewBase view;
};

} // namespace vrn::test
