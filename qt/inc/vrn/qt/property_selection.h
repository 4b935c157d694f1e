#pragma once

#include <vrn/qt/property_model.h>
#include <vrn/qt/relative_edit.h>

#include <QJsonObject>
#include <QPointer>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

class QUndoStack;

namespace vrn::qt {

/// What an edit did. The numbers add up: selected = changed + same + left.
struct PropertyReceipt
{
    std::string key; ///< Empty for a load of several properties.
    std::size_t selected = 0; ///< Objects that were found.
    std::size_t changed = 0;
    std::size_t same = 0; ///< Had the value already, bit for bit.
    std::size_t left = 0; ///< Out of range, without a value, or would not stay whole.
    QString text; ///< "Length: 9,812 of 10,000 changed, 188 would exceed 40.000 m and ..."
};

/// What varies in one property of a selection.
struct PropertySpread
{
    struct Share
    {
        boost::any value;
        QString text; ///< As it is shown. Values that differ below the shown digits have one text.
        std::size_t objects = 0; ///< How many have it, bit for bit.
    };
    /// The five most frequent values, the most frequent first; of equally frequent ones the
    /// lower first, and of texts and the like the one that comes first in the selection.
    std::vector<Share> frequent;
    /// @{
    /// Of numbers and quantities. What is not a number stands above all others.
    boost::any lowest;
    boost::any highest;
    /// @}
    std::size_t objects = 0; ///< Objects that were found.
    std::size_t withoutValue = 0; ///< Those of them without a value.
    /// "12 beams: 2.000 m to 7.620 m"; of what has no order "12 beams: 3 different values".
    QString text;
};

/// Some objects of a model, what they have in common, and edits of all of them.
///
///     ObjectModel objects;
///     PropertySet<Beam> beams("beam", [](int n) { return tr("%n beam(s)", nullptr, n); });
///     beams.add("depth", tr("&Depth"), &Beam::depth, field::number().between(0.0, 20.0));
///     objects.addKind(beams, [this](ObjectId id) {
///         return id.key < selection.size() ? &selection[id.key] : nullptr;
///     });
///     QUndoStack undo;
///     PropertySelection both(&objects, {0, 1}, &undo);
///     const PropertyReceipt receipt = both.edit("depth", 12.5);
///     // receipt.text is "Depth: 2 of 2 changed"
///     undo.undo(); // each beam has its own depth again
///
/// An edit is exact: a value that is the same bit for bit is not written, the others are
/// written by one call of the model, and that is one step on the undo stack. The step is
/// pushed after the write has succeeded. An edit that is refused throws PropertyError and
/// has written nothing.
///
/// A selection of several kinds has the properties that all of its kinds have under one key
/// with like fields, see Field::isLike(). An id that finds no object is passed over and not
/// forgotten.
///
/// It is a value, and holds model and stack weakly: without the model there is nothing to
/// read and to write. What is added to the model later as a kind is not seen.
class VRN_QT2_EXPORT PropertySelection
{
public:
    struct Row
    {
        std::string key;
        QString caption; ///< With "&" before the letter of its short cut.
        PropertySection section;
        Field field; ///< Of the first kind.
        QString title; ///< The caption as it stands in a text.
        /// Of each kind of the selection.
        std::vector<std::pair<std::uint32_t, Field>> fields;

        VRN_QT2_EXPORT bool isReadOnly() const; ///< In one kind at least.
        VRN_QT2_EXPORT bool isOptional() const; ///< In all kinds.
    };

    PropertySelection();
    /// `ids` in any order. Without a stack an edit cannot be undone.
    PropertySelection(PropertyModel* model, ObjectIds ids, QUndoStack* stack = nullptr);
    ~PropertySelection();
    PropertySelection(const PropertySelection&);
    PropertySelection(PropertySelection&&) noexcept;
    PropertySelection& operator=(const PropertySelection&);
    PropertySelection& operator=(PropertySelection&&) noexcept;

    PropertyModel* model() const { return m_model.data(); }
    const ObjectIds& ids() const { return m_ids; } ///< Sorted, without duplicates.
    const std::vector<Row>& rows() const { return m_rows; }
    /// Null for an unknown key.
    const Row* row(const std::string& key) const;
    /// "12 beams", "3 beams and 1 wall", for all ids or some of them.
    QString countedName() const { return countedName(m_ids); }
    QString countedName(const ObjectIds& ids) const;

    /// In the order of `keys`.
    std::vector<PropertyState> read(const PropertyKeys& keys) const;
    /// What varies in one property. It takes a few milliseconds for 100,000 objects; of a type
    /// without std::hash, it counts the first 64 different values only. An unknown key is
    /// reported. Throws PropertyError if the model throws.
    PropertySpread spread(const std::string& key) const;

    /// Gives all objects the value, or changes each from its own if the value is a
    /// RelativeEdit. An empty value clears an optional property. An unknown key and a value of
    /// another type are reported.
    ///
    /// Edits of one property with the same `gesture`, if that is not 0, become one step.
    PropertyReceipt edit(
        const std::string& key, const boost::any& value, std::uint64_t gesture = 0);
    /// What edit() would do, without doing it. Throws what edit() would throw before it
    /// writes. The text is "12 beams: 2.005 m to 7.625 m".
    PropertyReceipt preview(const std::string& key, const boost::any& value) const;

    /// The common values by key, and null for no value. What varies, cannot be written, or is
    /// neither number nor text is left out. Numbers keep every bit. Throws PropertyError if a
    /// property cannot be read.
    QJsonObject save() const;
    /// Gives the saved values to all objects, in one step. Throws PropertyError, and has
    /// written nothing, for another format, other kinds of object, a file that was altered,
    /// and a value that is refused.
    PropertyReceipt load(const QJsonObject& saved);

private:
    struct Plan;

    Plan plan(const std::string& key, const boost::any& value) const;
    Plan planValue(const Row& row, const boost::any& value) const;
    Plan planRelative(const Row& row, const RelativeEdit& edit) const;
    PropertyReceipt receipt(const Plan& plan) const;
    /// Of the kinds of the selection, for files.
    std::vector<std::string> kindKeys() const;
    void carryOut(std::vector<Plan> plans, const QString& name, std::uint64_t gesture);

    QPointer<PropertyModel> m_model;
    QPointer<QUndoStack> m_stack;
    SharedIds m_ids;
    std::vector<Row> m_rows;
};

} // namespace vrn::qt
