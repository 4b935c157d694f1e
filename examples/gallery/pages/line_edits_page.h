#pragma once

#include <vrn/qt/i_validator.h>

#include <QWidget>

#include <vector>

class QGridLayout;
class QLabel;

namespace vrn::qt {
class SimpleLineEdit;
}

namespace gallery {

/// A line edit for every validator, each beside the value that an application reads from it.
class LineEditsPage : public QWidget
{
    Q_OBJECT

public:
    explicit LineEditsPage(QWidget* parent = nullptr);

private:
    struct Row
    {
        vrn::qt::SimpleLineEdit* edit;
        QLabel* value;
        QLabel* type;
        QLabel* valid;
        QLabel* signalCount;
    };

    vrn::qt::SimpleLineEdit* addRow(const QString& caption, vrn::qt::IValidator::pointer validator,
        const boost::any& value, const QString& explanation);
    void addHeader();
    static void refresh(const Row& row);

    QGridLayout* m_grid;
    std::vector<Row> m_rows;
};

} // namespace gallery
