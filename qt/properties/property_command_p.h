#pragma once

#include <vrn/qt/property_model.h>

#include <QPointer>
#include <QUndoCommand>

#include <cstdint>
#include <vector>

namespace vrn::qt {

/// An edit on the undo stack, which is done already when it is pushed.
///
/// A step that the model refuses turns obsolete, so that the stack drops it, and the model
/// says why. Nothing is thrown, because Qt does not expect it.
class PropertyCommand final : public QUndoCommand
{
public:
    /// `before` has the values that the objects of each edit have now.
    PropertyCommand(PropertyModel* model, std::vector<PropertyEdit> edits,
        std::vector<PropertyValues> before, const QString& text, std::uint64_t gesture);
    ~PropertyCommand() override;

    const std::vector<PropertyEdit>& edits() const { return m_edits; }

    void undo() override;
    void redo() override;
    int id() const override;
    bool mergeWith(const QUndoCommand* other) override;

private:
    /// Writes the other values, and keeps those that were there for the next time.
    void swap();

    QPointer<PropertyModel> m_model;
    std::vector<PropertyEdit> m_edits; ///< With the values that were written last.
    std::vector<PropertyValues> m_others;
    std::uint64_t m_gesture;
    bool m_isDone = true;
};

} // namespace vrn::qt
