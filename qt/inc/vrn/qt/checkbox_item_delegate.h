#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <QItemDelegate>

namespace vrn::qt {

/// A QItemDelegate that draws no focus frame. For cells with a check box, which is
/// Qt::CheckStateRole of the model.
class VRN_QT2_EXPORT CheckboxItemDelegate : public QItemDelegate
{
    Q_OBJECT

public:
    explicit CheckboxItemDelegate(QObject* parent);
    ~CheckboxItemDelegate() override;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(
        QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;

private Q_SLOTS:
    /// Does nothing.
    void onClicked();

private:
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
        const QModelIndex& index) override;
    void drawFocus(
        QPainter* painter, const QStyleOptionViewItem& option, const QRect& rect) const override;
};

} // namespace vrn::qt
