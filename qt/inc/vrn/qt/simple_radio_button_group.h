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

/// One radio button for each entry of a list, the base of
/// MultiEditRadioButtonGroup.
///
/// Entries whose values are equivalent by the order have a button each, and
/// setSelected() finds the last of them.
class VRN_QT2_EXPORT SimpleRadioButtonGroup : public QWidget
{
    Q_OBJECT

public:
    /// A group of the buttons of `values`, in `parent`.
    ///
    /// `equalFn` tells whether two values are equal and `lessFn` orders them, as
    /// vrn::any_equal<int> and vrn::any_less<int> do; both only compare.
    ///
    /// With `useGroupBox` the buttons stand in a group box with `title`, which
    /// `layouter` lays out. Without one `layouter` is to have its layout already,
    /// and is finished by the caller; the buttons then belong to the container of
    /// that layout. In either case the layouter is not needed any longer when the
    /// group is made. Null stands for a VBoxLayouter, which is of use in a group
    /// box only.
    ///
    /// Buttons are exclusive among those in the same widget, and with
    /// `useButtonGroup` among those of this group instead.
    ///
    /// A missing parent or function, or an empty list, is reported. Without a
    /// function two values are different, and without an order none is found; an
    /// empty list has the empty value.
    static SimpleRadioButtonGroup* create(const QString& title, const NamedValueList& values,
        bool (*const& equalFn)(const boost::any&, const boost::any&),
        const boost::function<bool(const boost::any&, const boost::any&)>& lessFn, QWidget* parent,
        ILayouter* layouter, bool useGroupBox, bool useButtonGroup);
    ~SimpleRadioButtonGroup() override;

    /// The value of the checked button. Without one, which is reported, that of
    /// the first entry.
    boost::any getSelectedValue() const;
    /// Checks the button of `value`. An unknown value is reported, here and
    /// below, and changes nothing.
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
    /// The value of the first entry; empty without entries.
    const boost::any& firstValue() const;

    /// The box around the buttons; null without one.
    QWidget* buttonBox() const;

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
    // Receives the end of the buttons, which may stand in a widget of the application.
    // The last member, so the first to go, also when an order or a layouter throws.
    std::unique_ptr<QObject> m_listener;
};

} // namespace vrn::qt
