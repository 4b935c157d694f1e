#pragma once

#include <vrn/qt/multi_edit_file_picker.h>

#include <QWidget>

class QGridLayout;
class QLabel;

namespace vrn::qt {
class Toolbar;
}

namespace gallery {

/// A file picker of each type with its value, a toolbar in either direction with a button
/// whose function throws, and a style sheet from a file.
class FilesAndToolbarsPage : public QWidget
{
    Q_OBJECT

public:
    explicit FilesAndToolbarsPage(QWidget* parent = nullptr);

private:
    QWidget* createPickers();
    vrn::qt::MultiEditFilePicker* createPicker(vrn::qt::TypeofPath type);
    void addValueColumns(QGridLayout* grid, int row, vrn::qt::MultiEditFilePicker* picker);
    QWidget* createToolbars();
    void fill(vrn::qt::Toolbar* toolbar);
    QWidget* createStyle();

    QLabel* m_lastClick;
};

} // namespace gallery
