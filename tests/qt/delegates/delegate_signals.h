#pragma once

#include <QAbstractItemDelegate>
#include <QObject>
#include <QStringList>
#include <QWidget>

namespace vrn::test {

/// The commitData() and closeEditor() of a delegate, in their order: "commit " and the object
/// name of the editor, "close " and the name and the number of the hint. No editor is "null".
class DelegateSignals
{
public:
    explicit DelegateSignals(const QAbstractItemDelegate& delegate)
    {
        QObject::connect(&delegate, &QAbstractItemDelegate::commitData, &m_context,
            [this](const QWidget* editor) { list << "commit " + name(editor); });
        QObject::connect(&delegate, &QAbstractItemDelegate::closeEditor, &m_context,
            [this](const QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
                list << QString("close %1 %2").arg(name(editor)).arg(int(hint));
            });
    }

    QStringList list;

private:
    static QString name(const QObject* object)
    {
        return object ? object->objectName() : QStringLiteral("null");
    }

    QObject m_context;
};

} // namespace vrn::test
