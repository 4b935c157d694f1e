#pragma once

#include <vrn/qt/key_value_storage.h>
#include <vrn/qt/vrn_qt2_export.h>

#include <boost/any.hpp>
#include <boost/function.hpp>

#include <cstdint>
#include <string>

namespace vrn::qt {

/// The order in which an application loads its controls. The library stores it and
/// does not use it.
enum class LoadOrder : std::uint32_t
{
    Default = 0
};

/// One control for one property of many selected objects: the second base of
/// every MultiEdit control.
///
///     auto* control = MultiEditLineEdit::create(
///         form, tr("Depth"), new DoubleEditValidator, 0, ExpandHorizontal);
///     const auto read = [=] { // for each selection
///         const QSignalBlocker blocker(control); // some emit valueChanged() on reads
///         control->reset();
///         for (const Beam& beam : selection)
///             control->readValue(beam.depth);
///         m_shown = control->getCurrentValue(); // a boost::any
///     };
///     read();
///     connect(control, &MultiEditLineEdit::valueChanged, this, [=] {
///         const boost::any depth = control->getCurrentValue();
///         if (depth.empty() || vrn::any_equal<double>(depth, m_shown))
///             return; // nothing was entered
///         m_shown = depth;
///         model.setDepth(selection, boost::any_cast<double>(depth));
///     });
///
/// Without the comparison, data would be lost. valueChanged() also comes when the user
/// presses Enter or Tab in an untouched field, and the control then gives what it
/// shows: 3.333 for a depth of 10/3. A slot that wrote this would round every selected
/// object. So keep what the control gives after reading, and write only a value that
/// differs from it.
///
/// A field that has the focus also ends its editing when its form is destroyed. Hide
/// the form in its destructor, while the slots still have the members that they use.
///
/// A control is in one of three states:
///
///  - fresh: from construction or reset() to the first readValue();
///  - common: it shows the one value read so far, or set, or entered by the user;
///  - varies: the values read differ, forceVaries() was called, or the user has made
///    getVariesString() the text. It shows that or what stands for it, its current
///    value is empty, and further reads change nothing until a new value is set or
///    entered.
///
/// A control that varies says in a tool tip that the selected objects differ, unless the
/// application has given it, a part of it or a widget around it a tool tip.
///
/// A control can also carry functions that save its value to a KeyValueStorage
/// and load it from there.
class VRN_QT2_EXPORT MultiEditControlBase
{
public:
    MultiEditControlBase(const MultiEditControlBase&) = delete;
    MultiEditControlBase& operator=(const MultiEditControlBase&) = delete;
    /// Not virtual: a control is destroyed through its widget base, never through a
    /// pointer to this class.
    ~MultiEditControlBase();

    /// Forgets what was read.
    virtual void reset() = 0;
    /// Takes the value of the next selected object into account.
    virtual void readValue(const boost::any& value) = 0;
    /// Whether the values differ.
    virtual bool dataVaries() const = 0;
    /// The value for all objects. It is empty while the control varies: do not write
    /// anything back then.
    virtual boost::any getCurrentValue() const = 0;
    /// Shows `value`, which is the value of all objects from now on.
    virtual void setValue(const boost::any& value) = 0;
    /// Shows that the values differ.
    virtual void forceVaries() = 0;

    /// Lets the control be saved under `id`, by these functions.
    void setCanBeSaved(const std::string& id, boost::function<bool(vrn::KeyValueStorage&)> saver,
        boost::function<void(const vrn::KeyValueStorage&)> loader);
    /// For the application to check: save() and load() do not look at it.
    bool canBeSaved() const { return m_canBeSaved; }
    const std::string& getStorageId() const { return m_storageId; }

    /// Returns what the saver returns, or false if there is none. What the saver
    /// throws passes through.
    bool save(vrn::KeyValueStorage& storage) const;
    /// Calls the loader, if there is one.
    void load(const vrn::KeyValueStorage& storage);

    void setLoadOrder(LoadOrder order) { m_loadOrder = order; }
    LoadOrder getLoadOrder() const { return m_loadOrder; }

    /// While this is true, setValue() of a line edit, enum box or check box emits
    /// nothing, and neither does readValue() of a check box. Group boxes and radio
    /// groups ignore it. Only a derived class can set it.
    bool isLoading() const { return m_loading; }

protected:
    MultiEditControlBase();

    void setLoading(bool loading) { m_loading = loading; }

private:
    bool m_canBeSaved = false;
    std::string m_storageId;
    boost::function<bool(vrn::KeyValueStorage&)> m_saver;
    boost::function<void(const vrn::KeyValueStorage&)> m_loader;
    LoadOrder m_loadOrder = LoadOrder::Default;
    bool m_loading = false;
};

} // namespace vrn::qt
