#pragma once

#include <vrn/qt/property_model.h>

#include <QPointer>
#include <QUndoCommand>

#include <cstdint>
#include <string>
#include <vector>

namespace vrn::qt {

/// One property as it was and as it is after an edit.
struct PropertyChange
{
    std::string key;
    ObjectIds ids;
    PropertyValues before;
    PropertyValues after;
};

/// An edit on the undo stack, which is done already when it is pushed.
///
/// A step that the model refuses turns obsolete, so that the stack drops it, and the model
/// says why. Nothing is thrown, because Qt does not expect it.
class PropertyCommand final : public QUndoCommand
{
public:
    PropertyCommand(PropertyModel* model, std::vector<PropertyChange> changes, const QString& text,
        std::uint64_t gesture);
    ~PropertyCommand() override;

    void undo() override;
    void redo() override;
    int id() const override;
    bool mergeWith(const QUndoCommand* other) override;

private:
    void apply(PropertyValues PropertyChange::*values);

    QPointer<PropertyModel> m_model;
    std::vector<PropertyChange> m_changes;
    std::uint64_t m_gesture;
    bool m_isDone = true;
};

} // namespace vrn::qt
