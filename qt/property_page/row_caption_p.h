#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <QLabel>

namespace vrn::qt::detail {

/// The caption of a row. On a narrow page it gives way to the editor: it ends in an ellipsis,
/// and its tool tip has all of it.
class VRN_QT2_EXPORT RowCaption : public QLabel
{
    Q_OBJECT

public:
    RowCaption(const QString& text, QWidget* parent);

    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    bool isElided() const;
};

} // namespace vrn::qt::detail
