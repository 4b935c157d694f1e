#pragma once

#include <QWidget>

class QGridLayout;
class QLabel;

namespace vrn::qt {
class MultiEditEnumBox;
class SimpleEnumBox;
} // namespace vrn::qt

namespace gallery {

/// Enum boxes of every kind, each beside the value that an application reads from it.
class EnumBoxesPage : public QWidget
{
    Q_OBJECT

public:
    explicit EnumBoxesPage(QWidget* parent = nullptr);

private:
    struct Row
    {
        vrn::qt::SimpleEnumBox* box;
        vrn::qt::MultiEditEnumBox* selection; ///< The same box, or null.
        QLabel* value;
        QLabel* type;
        QLabel* varies;
        QLabel* signalCount;
    };

    void addHeader();
    void addRow(vrn::qt::SimpleEnumBox* box);
    static void refresh(const Row& row);

    QGridLayout* m_grid;
};

} // namespace gallery
