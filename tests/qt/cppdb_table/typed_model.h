#pragma once

#include <vrn/qt/cell_data.h>

#include <QAbstractTableModel>
#include <QStringList>

#include "support/any_to_string.h"

#include <string>
#include <utility>
#include <vector>

namespace vrn::test {

/// A table of typed values, which derives what it shows from them.
///
/// Its content is also a text: rows are separated by " | " and cells by a comma. A cell is a
/// number as in "1.5" or "2.0", a whole number as in "2", a text as in "'beam'", "-" for an
/// empty value, "none" for no value and "other" for a variant of another type.
class TypedModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using Row = std::vector<QVariant>;

    explicit TypedModel(const QString& content)
    {
        for (const QString& row : content.split(QStringLiteral(" | "))) {
            m_rows.emplace_back();
            for (const QString& cell : row.split(QLatin1Char(',')))
                m_rows.back().push_back(cellOf(cell));
        }
        m_columnCount = int(m_rows.front().size());
    }

    QString content() const
    {
        QStringList rows;
        for (const Row& row : m_rows) {
            QStringList cells;
            for (const QVariant& cell : row)
                cells << textOf(cell);
            rows << cells.join(QLatin1Char(','));
        }
        return rows.join(QStringLiteral(" | "));
    }

    static QVariant cellOf(const QString& text)
    {
        if (text == QLatin1String("none"))
            return QVariant();
        if (text == QLatin1String("other"))
            return QVariant(QStringLiteral("other"));
        if (text == QLatin1String("-"))
            return QVariant::fromValue(boost::any());
        if (text.startsWith(QLatin1Char('\'')))
            return QVariant::fromValue<boost::any>(text.mid(1, text.size() - 2).toStdWString());
        if (text.contains(QLatin1Char('.')))
            return QVariant::fromValue<boost::any>(text.toDouble());
        return QVariant::fromValue<boost::any>(text.toInt());
    }

    static QString textOf(const QVariant& cell)
    {
        if (!cell.isValid())
            return QStringLiteral("none");
        if (!cell.canConvert<boost::any>())
            return QStringLiteral("other");
        return textOf(cell.value<boost::any>());
    }

    static QString textOf(const boost::any& value)
    {
        if (value.empty())
            return QStringLiteral("-");
        if (const auto* text = boost::any_cast<std::wstring>(&value))
            return QLatin1Char('\'') + QString::fromStdWString(*text) + QLatin1Char('\'');
        if (const auto* number = boost::any_cast<double>(&value)) {
            const QString digits = QString::number(*number, 'g', 17);
            return digits.contains(QLatin1Char('.')) ? digits : digits + QStringLiteral(".0");
        }
        return QString::number(boost::any_cast<int>(value));
    }

    int rowCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : int(m_rows.size());
    }
    int columnCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : m_columnCount;
    }

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override
    {
        if (!index.isValid())
            return QVariant();
        const QVariant& cell = m_rows[std::size_t(index.row())][std::size_t(index.column())];
        if (role == vrn::qt::EditRole)
            return cell;
        if (role == Qt::DisplayRole)
            return textOf(cell);
        return QVariant();
    }

    /// Each call is in `writes`, as in "0,1 = 'beam'".
    bool setData(const QModelIndex& index, const QVariant& value, int role) override
    {
        writes
            << QStringLiteral("%1,%2 = %3").arg(index.row()).arg(index.column()).arg(textOf(value));
        if (role != vrn::qt::EditRole)
            writes.last() += QStringLiteral(" in role %1").arg(role);
        if (refuses || !checkIndex(index, CheckIndexOption::IndexIsValid))
            return false;
        m_rows[std::size_t(index.row())][std::size_t(index.column())] = value;
        Q_EMIT dataChanged(index, index);
        return true;
    }

    void insert(int place, const QString& row)
    {
        beginInsertRows({}, place, place);
        Row cells;
        for (const QString& cell : row.split(QLatin1Char(',')))
            cells.push_back(cellOf(cell));
        m_rows.insert(m_rows.begin() + place, std::move(cells));
        endInsertRows();
    }
    void append(const QString& row) { insert(rowCount(), row); }

    void remove(int place)
    {
        beginRemoveRows({}, place, place);
        m_rows.erase(m_rows.begin() + place);
        endRemoveRows();
    }

    void reset()
    {
        beginResetModel();
        endResetModel();
    }

    QStringList writes;
    /// Refuses every value.
    bool refuses = false;

private:
    std::vector<Row> m_rows;
    int m_columnCount;
};

} // namespace vrn::test
