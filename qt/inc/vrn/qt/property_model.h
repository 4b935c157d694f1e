#pragma once

#include <vrn/qt/property_set.h>
#include <vrn/units/context.h>

#include <QObject>
#include <QString>
#include <QTimer>

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace vrn::qt {

/// Values of one property for some objects.
struct PropertyEdit
{
    std::string key;
    SharedIds ids; ///< Sorted, without duplicates.
    PropertyValues values; ///< In the order of the ids, or uniform.
};

/// What some objects have in common in one property.
struct PropertyState
{
    enum Kind
    {
        NoObject, ///< No id has found an object.
        NoValue, ///< No object has a value.
        Common, ///< All have the same value, bit for bit.
        Varies, ///< They differ, or only some have a value.
        Unreadable ///< The model has thrown.
    };
    Kind kind = NoObject;
    boost::any value; ///< If it is common.
    QString reason; ///< If it is unreadable.
    /// If it varies: two of the values. Empty if only some objects have one.
    std::pair<boost::any, boost::any> different{};
};

/// Reads and writes objects by id. Selections, tables and undo steps hold it weakly: it may
/// go before any of them. It belongs to the GUI thread.
///
/// Objects in C++ need ObjectModel only. To show a database, derive from this class and
/// implement read() and write():
///
///     class Members : public PropertyModel
///     {
///     public:
///         Members()
///         {
///             PropertyList bars("bar", [](int n) { return tr("%n bar(s)", nullptr, n); });
///             bars.section("size", tr("Size"))
///                 .add("width", tr("&Width"), field::number().between(1.0, 500.0));
///             addKind(bars);
///         }
///         void read(const PropertyKeys& keys, const ObjectIds& ids, PropertySink& sink)
///             const override
///         {
///             for (std::size_t key = 0; key < keys.size(); ++key) {
///                 for (const ObjectId& id : ids)
///                     sink.put(key, id, m_width); // a row of the answer
///             }
///         }
///
///     protected:
///         void write(const std::vector<PropertyEdit>& edits) override
///         {
///             for (const PropertyEdit& edit : edits)
///                 m_width = edit.values.get<double>(edit.ids.size() - 1);
///         }
///
///     private:
///         double m_width = 20.0;
///     };
///
/// `delete` and `deleteLater` of the model are safe in any slot of its signals.
class VRN_QT2_EXPORT PropertyModel : public QObject
{
    Q_OBJECT

public:
    /// With the units of the active input context.
    explicit PropertyModel(QObject* parent = nullptr);
    ~PropertyModel() override;

    /// The description is copied. Returns the kind: 0, 1, 2 and so on. A condition that names
    /// no property, or whose value has another type, is reported and left out.
    std::uint32_t addKind(const PropertyList& properties);
    std::uint32_t kindCount() const;
    /// An unknown kind is reported, and has no properties.
    const PropertyList& kind(std::uint32_t kind) const;

    /// In which everything that shows this model reads and writes texts. Only what is shown
    /// changes.
    void setUnits(const vrn::units::Context& units);
    const vrn::units::Context& units() const { return m_units; }

    /// Values have changed, or objects come and go, by whatever way; an empty list stands for
    /// all. What is computed from one of `keys` has changed, too. changed() comes once per turn
    /// of the event loop, however often this is called.
    /// What selections and undo steps write is announced already.
    void announce(const PropertyKeys& keys = {}, const ObjectIds& ids = {});
    /// Emits at once what is due at the end of this turn of the event loop.
    void flush();

    /// @{
    /// Reads some properties of some objects; `ids` are sorted, without duplicates. The
    /// objects may be of several kinds, in which a property of one key has one type. What
    /// the model throws passes through readValues(), and is in the states.
    std::vector<PropertyValues> readValues(const PropertyKeys& keys, const ObjectIds& ids) const;
    std::vector<PropertyState> readStates(const PropertyKeys& keys, const ObjectIds& ids) const;
    /// @}

    /// As it is shown, for a report or a list. Empty if the object has no value.
    QString text(ObjectId id, const std::string& key) const;

    /// Puts the values of `keys` of the objects `ids`, which are sorted and without
    /// duplicates, into `sink`. An object that is not there is passed over, and so is a
    /// property that its kind does not have. It must not change the model.
    virtual void read(const PropertyKeys& keys, const ObjectIds& ids, PropertySink& sink) const = 0;
    /// All objects of a kind, for tables. None here.
    virtual ObjectIds objects(std::uint32_t kind) const;

    /// True while write() runs. No other edit is taken meanwhile.
    bool isWriting() const { return *m_isWriting; }

Q_SIGNALS:
    /// Empty lists stand for all.
    void changed(const vrn::qt::PropertyKeys& keys, const vrn::qt::ObjectIds& ids);
    void unitsChanged();
    /// An undo step could not be undone or done again, and has become obsolete. It comes in
    /// the next turn of the event loop.
    void failed(const QString& reason);
    /// write() has returned or thrown, and the model takes edits again. It comes once per turn
    /// of the event loop, after changed().
    void writingEnded();

protected:
    /// Does all of `edits`, or throws and has done nothing. It is called once for an edit of
    /// the user, a loaded file, and a step of undo or redo. An object that is not there is
    /// passed over. It may open dialogs, and destroy selections, undo stacks and this model;
    /// but when undo or redo calls it, Qt goes on with the stack.
    virtual void write(const std::vector<PropertyEdit>& edits) = 0;

private:
    friend class PropertySelection;
    friend class PropertyCommand;

    /// Calls write() and announces. Throws PropertyError.
    void apply(const std::vector<PropertyEdit>& edits);
    PropertyKeys affectedBy(const PropertyKeys& keys) const;
    void announceUnique(const PropertyKeys& keys, const SharedIds& ids);
    void addMoreIds();
    void fail(const QString& reason);
    void schedule();
    const Field* fieldOf(const std::string& key, const ObjectIds& ids) const;

    std::vector<PropertyList> m_kinds;
    vrn::units::Context m_units;
    // Outlives the model if write() destroys it.
    std::shared_ptr<bool> m_isWriting = std::make_shared<bool>(false);

    QTimer m_turn;
    bool m_isAnnounced = false;
    PropertyKeys m_changedKeys;
    SharedIds m_changedIds; ///< Sorted, without duplicates.
    ObjectIds m_moreIds; ///< To be added to these.
    std::vector<QString> m_failures;
    bool m_hasWritten = false;
};

} // namespace vrn::qt
