#pragma once

#include <vrn/qt/key_value_storage.h>
#include <vrn/qt/vrn_qt2_export.h>

#include <boost/any.hpp>
#include <boost/function.hpp>

#include <cstdint>
#include <string>

namespace vrn::qt {

/// In which turn an application loads its controls. The library stores the
/// order and reads it nowhere.
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
///         const QSignalBlocker blocker(control); // some controls also tell of reads
///         control->reset();
///         for (const Beam& beam : selection)
///             control->readValue(beam.depth);
///         m_shown = control->getCurrentValue();
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
/// Without the comparison data would be lost. valueChanged() also comes when the user
/// presses Enter or Tab in an untouched field, and the control then gives what it
/// shows: 3.333 for a depth of 10/3. A slot that wrote this would round every selected
/// object. So keep what the control gives after reading, and write only a value that
/// differs from it.
///
/// A field with the focus ends its editing also when its form is destroyed. Hide the
/// form in its destructor, while its slots still have the members that they use.
///
/// A control is in one of three states:
///
///  - fresh: from construction or reset() to the first readValue();
///  - common: it shows the one value read so far, or set, or entered by the user;
///  - varies: the values read differ, forceVaries() was called, or the user has
///    brought getVariesString() into a text. It shows that or what stands for it,
///    its current value is empty, and further reads change nothing until a new
///    value is set or entered.
///
/// A control can also carry functions that save its value to a KeyValueStorage
/// and load it from there.
class VRN_QT2_EXPORT MultiEditControlBase
{
public:
    MultiEditControlBase(const MultiEditControlBase&) = delete;
    MultiEditControlBase& operator=(const MultiEditControlBase&) = delete;
    /// Not virtual: a control is destroyed through its widget base, and nobody
    /// owns one as a MultiEditControlBase.
    ~MultiEditControlBase();

    /// Forgets what was read.
    virtual void reset() = 0;
    /// Takes the value of the next selected object into account.
    virtual void readValue(const boost::any& value) = 0;
    /// Whether the values differ.
    virtual bool dataVaries() const = 0;
    /// The value for all objects. Empty while the control varies: then nothing
    /// is to be written back.
    virtual boost::any getCurrentValue() const = 0;
    /// Shows `value`, which holds for all objects from now on.
    virtual void setValue(const boost::any& value) = 0;
    /// Shows that the values differ.
    virtual void forceVaries() = 0;

    /// Makes the control one that can be saved, under `id`. Both functions are
    /// taken over.
    void setCanBeSaved(const std::string& id, boost::function<bool(vrn::KeyValueStorage&)> saver,
        boost::function<void(const vrn::KeyValueStorage&)> loader);
    /// For the application to ask; save() and load() do not.
    bool canBeSaved() const { return m_canBeSaved; }
    const std::string& getStorageId() const { return m_storageId; }

    /// What the saver returns, or false without one. What it throws passes.
    bool save(vrn::KeyValueStorage& storage) const;
    /// Calls the loader, if there is one.
    void load(const vrn::KeyValueStorage& storage);

    void setLoadOrder(LoadOrder order) { m_loadOrder = order; }
    LoadOrder getLoadOrder() const { return m_loadOrder; }

    /// While this is so, setValue() of a line edit, enum box or check box emits
    /// nothing, nor does readValue() of a check box; group boxes and radio groups
    /// do not ask. Nobody but a derived class makes it so.
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
