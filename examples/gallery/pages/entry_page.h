#pragma once

#include <vrn/qt/entry_validator.h>

#include <boost/shared_ptr.hpp>

#include <QWidget>

#include <vector>

class QGridLayout;
class QLabel;

namespace vrn::qt {
class SimpleLineEdit;
} // namespace vrn::qt

namespace gallery {

/// Fields of several kinds that read what engineers write. Beside each, at every key: the
/// value, the text that the wrapped validator gets, and the reason or what will happen.
class EntryPage : public QWidget
{
    Q_OBJECT

public:
    explicit EntryPage(QWidget* parent = nullptr);

private:
    struct Row
    {
        boost::shared_ptr<vrn::qt::EntryValidator> entry;
        vrn::qt::SimpleLineEdit* field;
        QLabel* value;
        QLabel* given;
        QLabel* reason;
    };

    /// The field begins with `typed`, as if the user had typed it.
    void addRow(const QString& caption, vrn::qt::IValidator::pointer target, const QString& typed,
        vrn::qt::EntryRange range = vrn::qt::EntryRange::Clamp);
    static void show(const Row& row);

    QGridLayout* m_grid;
    std::vector<Row> m_rows;
};

} // namespace gallery
