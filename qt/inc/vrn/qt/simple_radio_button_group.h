#pragma once

#include <vrn/qt/i_layouter.h>
#include <vrn/qt/named_value_list.h>
#include <vrn/qt/vrn_qt2_export.h>

#include <boost/any.hpp>
#include <boost/function.hpp>

#include <QWidget>

#include <map>
#include <memory>

class QGroupBox;
class QRadioButton;

namespace vrn::qt {

namespace detail {
class TabStop;
}

/// One radio button for each entry of a list, the base of
/// MultiEditRadioButtonGroup.
///
/// Entries whose values are equivalent in the order still have a button each;
/// setSelected() finds the last of them.
///
/// Tab enters the group at the checked button, and leaves it from there. The arrow keys
/// move within the group.
class VRN_QT2_EXPORT SimpleRadioButtonGroup : public QWidget
{
    Q_OBJECT

public:
    /// Makes a group with a button for each of `values`, in `parent`.
    ///
    /// `equalFn` tells whether two values are equal and `lessFn` orders them, as
    /// vrn::any_equal<int> and vrn::any_less<int> do. Both must only compare.
    ///
    /// With `useGroupBox` the buttons are in a group box with `title`, which `layouter`
    /// lays out. Without it `layouter` must have its layout already, and the caller
    /// finishes it; the buttons then belong to the container of that layout. No slot must
    /// destroy that container while a button is being checked or the user moves with the
    /// arrow keys, because Qt continues to work on the button. In either case the layouter
    /// is no longer needed after this call. Null stands for a VBoxLayouter, which is useful
    /// only in a group box.
    ///
    /// Only one button in the same widget can be checked, or, with `useButtonGroup`,
    /// only one button in this group.
    ///
    /// A missing parent or function, or an empty list, is reported. Without `equalFn`
    /// any two values differ, and without `lessFn` no value is found. The value of an
    /// empty list is empty.
    static SimpleRadioButtonGroup* create(const QString& title, const NamedValueList& values,
        bool (*const& equalFn)(const boost::any&, const boost::any&),
        const boost::function<bool(const boost::any&, const boost::any&)>& lessFn, QWidget* parent,
        ILayouter* layouter, bool useGroupBox, bool useButtonGroup);
    ~SimpleRadioButtonGroup() override;

    /// The value of the checked button. If none is checked, this is reported, and the
    /// result is the value of the first entry.
    boost::any getSelectedValue() const;
    /// Checks the button of `value`. An unknown value is reported and changes
    /// nothing, here and in setValueEnabled().
    void setSelected(const boost::any& value);

    void setValueEnabled(const boost::any& value, bool enabled);
    void setValuesEnabled(bool enabled);

protected:
    using EqualFunction = bool (*)(const boost::any&, const boost::any&);
    using LessFunction = boost::function<bool(const boost::any&, const boost::any&)>;

    SimpleRadioButtonGroup(const QString& title, const NamedValueList& values,
        EqualFunction equalFn, const LessFunction& lessFn, QWidget* parent, ILayouter* layouter,
        bool useGroupBox, bool useButtonGroup);

    /// As getSelectedValue(), without a copy.
    const boost::any& selectedValue() const;
    /// The value of the first entry, or empty if there are no entries.
    const boost::any& firstValue() const;

    /// The box around the buttons; null without one.
    QWidget* buttonBox() const;
    /// To be called after the buttons were checked or unchecked with blocked signals: Tab
    /// enters the group at the checked one.
    void updateTabStop();

    EqualFunction m_equalFn;
    LessFunction m_lessFn;
    NamedValueList m_values;
    std::map<boost::any, QRadioButton*, LessFunction> m_value2button;
    std::map<QRadioButton*, boost::any> m_button2value;

private:
    QRadioButton* buttonOf(const boost::any& value) const;
    void forget(QRadioButton* button);

    std::unique_ptr<ILayouter> m_ownedLayouter;
    QGroupBox* m_groupBox = nullptr;
    std::unique_ptr<detail::TabStop> m_tabStop;
    // Is told when a button is destroyed: the buttons may be in a widget of the
    // application. It is the last member, so that it is destroyed first, even if an
    // order or a layouter throws.
    std::unique_ptr<QObject> m_listener;
};

} // namespace vrn::qt
