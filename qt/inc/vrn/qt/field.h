#pragma once

#include <vrn/qt/named_value_list.h>
#include <vrn/qt/object_id.h>
#include <vrn/qt/value_type.h>
#include <vrn/qt/vrn_qt2_export.h>
#include <vrn/units/context.h>

#include <boost/any.hpp>

#include <QSharedDataPointer>
#include <QString>

#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace vrn::qt {

/// What a relative edit does with an object that it would take out of its range.
enum class OutOfRange
{
    Leave, ///< The object keeps its value and is counted in the receipt.
    RefuseAll ///< Nothing is written.
};

/// How one property is read, limited and shown. The functions in namespace field make it.
/// It is a value: a copy does not see later changes.
///
///     const auto span = field::quantity(UnitId::GEO_LENGTH).between(0.1, 40.0);
///     const QString shown = span.text(2.0, Context());         // "2.000 m"
///     const QString reason = span.reasonAgainst(50.0, Context());
///     // "It must be between 0.100 m and 40.000 m."
class VRN_QT2_EXPORT Field
{
public:
    enum class Shape
    {
        Quantity, ///< A `double` in the base scale of its kind, or in storageUnit().
        Number, ///< A `double` without a unit.
        Integer, ///< An `int`.
        Text, ///< A QString.
        Flag, ///< A `bool`.
        Choice, ///< One of entries().
        Custom ///< Any type with `==`.
    };
    using UnitId = vrn::units::UnitId::UnitId;

    Field(const Field&);
    Field(Field&&) noexcept;
    Field& operator=(const Field&);
    Field& operator=(Field&&) noexcept;
    ~Field();

    Shape shape() const;
    /// Of quantities; otherwise DIMENSIONLESS.
    UnitId kind() const;
    /// BLANK if the values are in the base scale.
    UnitId storageUnit() const;
    const NamedValueList& entries() const;
    bool isOptional() const;
    bool isReadOnly() const;
    bool takesRelativeEdits() const;
    OutOfRange outOfRangePolicy() const;
    /// Of numbers and quantities: whether an editor offers exactText() when editing begins.
    bool offersFullDigits() const;
    /// Under which entries are kept; empty if they are not. A field in a PropertyList whose
    /// history() names no key has one of its own there, unless it is a quantity.
    std::string historyKey() const;
    const QString& toolTip() const;
    const PropertyKeys& sources() const;
    /// The property that decides whether the user may edit this one, see FieldOf::enabledIf();
    /// empty if none does.
    const std::string& conditionKey() const;
    /// Whether the user may edit an object that has `value` in conditionKey().
    bool isEnabledBy(const boost::any& value) const;
    /// The name under which the application may have registered an editor. Without one of its
    /// own, a field has that of its shape: "property.quantity", "property.number",
    /// "property.integer", "property.text", "property.flag", "property.choice" or
    /// "property.custom".
    std::string editor() const;

    /// Two kinds of object may have a property of the same key. A selection of both has this
    /// property if the fields are alike: the same type of value, kind of quantity, digits,
    /// limits, entries and condition, and the same name of an editor.
    bool isLike(const Field& other) const;

    /// As it is shown: numbers with a point and rounded, a value that is none of the entries
    /// as what it is, and no value as an empty text. A value of another type is reported and
    /// has no text.
    QString text(const boost::any& value, const vrn::units::Context& units) const;
    /// The shortest text that vrn::units::EntryReader reads back as the value, bit for bit: that
    /// of text() if it does; otherwise with more digits in the shown unit or, where no number
    /// there comes to the value, in the unit of the base scale or another unit of the kind.
    /// Feet and inches become decimal feet. If no text reads back, it is text(): for infinity,
    /// and for a few numbers that are stored in another unit than that of the base scale, or
    /// whose kind does not list that unit.
    QString exactText(const boost::any& value, const vrn::units::Context& units) const;
    /// Why the value cannot be entered, or an empty text: it is out of range, too long, none
    /// of the entries, or empty without need, or a check of the application's own refuses it.
    /// Values that are read from a model are not checked.
    QString reasonAgainst(const boost::any& value, const vrn::units::Context& units) const;

    /// @{
    /// Of quantities: from the numbers of the model to the base scale, and back.
    double toBase(double stored, const vrn::units::Context& units) const;
    double fromBase(double value, const vrn::units::Context& units) const;
    /// @}
    /// Whether a number of the model is below its range (-1), above (1) or neither (0). What
    /// is not a number is below.
    int sideOfRange(double stored, const vrn::units::Context& units) const;

    /// The limits as they are shown.
    std::pair<QString, QString> limitTexts(const vrn::units::Context& units) const;

    const detail::ValueType& valueType() const;

protected:
    struct Data;
    using Check = std::function<QString(const boost::any&)>;

    Field(Shape shape, std::shared_ptr<const detail::ValueType> type);

    void setKind(UnitId kind);
    void setDecimals(int decimals);
    void setRange(double lowest, double highest);
    void setOutOfRange(OutOfRange policy);
    void setMaxLength(int characters);
    void setCheck(Check check);
    void setOptional();
    void setReadOnly();
    void setStorageUnit(UnitId unit);
    void setRelativeEdits(bool offered);
    void setFullDigits(bool offered);
    void setHistory(const std::string& key);
    void setToolTip(const QString& text);
    void setSources(const PropertyKeys& keys);
    void setCondition(const std::string& key, const boost::any& value,
        std::shared_ptr<const detail::ValueType> type);
    void setEntries(const NamedValueList& entries);
    void setEditor(const std::string& name);

private:
    friend class PropertyList;

    /// For a field with a history that has no key yet.
    void setHistoryOf(const std::string& propertyKey);
    /// Reports and drops a condition that no object can meet, because conditionKey() is unknown
    /// (`source` is null) or its values have another type.
    void checkCondition(const Field* source);
    QString range(const vrn::units::Context& units) const;

    QSharedDataPointer<Data> m_data;
};

/// A field of values of the type V.
template <typename V>
class FieldOf : public Field
{
public:
    using Value = V;

    explicit FieldOf(Shape shape)
        : Field(shape, std::make_shared<detail::TypedValueType<V>>())
    {}

    /// Of numbers and quantities; these in the base scale, with storedIn(), too. A value out of
    /// range is refused when it is entered, with the range as the reason. If a model has one, it
    /// stays.
    FieldOf& between(V lowest, V highest)
    {
        static_assert(
            std::is_same_v<V, double> || std::is_same_v<V, int>, "only a number has a range");
        setRange(double(lowest), double(highest));
        return *this;
    }
    FieldOf& outOfRange(OutOfRange policy)
    {
        setOutOfRange(policy);
        return *this;
    }
    /// Of texts: a longer one is refused.
    FieldOf& maxLength(int characters)
    {
        static_assert(std::is_same_v<V, QString>, "only a text has a length");
        setMaxLength(characters);
        return *this;
    }
    /// A check of one's own: the reason for refusing, or an empty text. It sees each value
    /// that is entered, and each result of a relative edit.
    FieldOf& accept(std::function<QString(const V&)> reasonAgainst)
    {
        setCheck([check = std::move(reasonAgainst)](
                     const boost::any& value) { return check(boost::any_cast<const V&>(value)); });
        return *this;
    }
    /// An object may have no value. A `std::optional` member makes its field optional by
    /// itself.
    FieldOf& optional()
    {
        setOptional();
        return *this;
    }
    /// Shown and never written. Properties without a setter are so anyway.
    FieldOf& readOnly()
    {
        setReadOnly();
        return *this;
    }
    /// The numbers of the model are in `unit`, not in the base scale. Values are compared and
    /// kept as the model has them; only limits, and what is typed and shown, are converted.
    FieldOf& storedIn(UnitId unit)
    {
        static_assert(std::is_same_v<V, double>, "only a quantity has a unit");
        setStorageUnit(unit);
        return *this;
    }
    /// Numbers and quantities take them unless this says false.
    FieldOf& relativeEdits(bool offered)
    {
        setRelativeEdits(offered);
        return *this;
    }
    /// Of numbers and quantities: an editor offers all digits of a value when editing begins,
    /// unless this says false.
    FieldOf& fullDigits(bool offered)
    {
        setFullDigits(offered);
        return *this;
    }
    /// What is entered is kept, in the storage that the page was given. Fields with one key
    /// share their entries. Without a key, all quantities of a kind share theirs, and any other
    /// property has its own.
    FieldOf& history(const std::string& key = {})
    {
        setHistory(key);
        return *this;
    }
    FieldOf& toolTip(const QString& text)
    {
        setToolTip(text);
        return *this;
    }
    /// What the value is computed from: it is read again when one of these is written.
    FieldOf& computedFrom(const PropertyKeys& keys)
    {
        setSources(keys);
        return *this;
    }
    /// A page enables the property while all selected objects have `value` in the property
    /// `key`. A table shows its values of the other objects in grey. Only the user is held
    /// back: an edit by the program, a file that is loaded, undo and redo do not ask. There is
    /// one condition; the last one counts.
    ///
    /// `value` has the type of the property `key`. An unknown key and a value of another type
    /// are reported when a model gets the properties, and then there is no condition.
    template <typename U>
    FieldOf& enabledIf(const std::string& key, U value)
    {
        setCondition(
            key, boost::any(std::move(value)), std::make_shared<detail::TypedValueType<U>>());
        return *this;
    }
    /// While all selected objects have `true` there.
    FieldOf& enabledIf(const std::string& key) { return enabledIf(key, true); }
    FieldOf& entries(const std::vector<std::pair<QString, V>>& choice)
    {
        NamedValueList list;
        for (const auto& entry : choice)
            list.emplace_back(entry.first, boost::any(V(entry.second)));
        setEntries(list);
        return *this;
    }
    /// The name of a registered editor; see docs/hints.md.
    FieldOf& editor(const std::string& name)
    {
        setEditor(name);
        return *this;
    }
};

/// Makes fields: `field::integer().between(1, 99)`.
namespace field {

/// A physical quantity of a unit set such as GEO_LENGTH, or of a unit. The value is a
/// `double` in the base scale.
VRN_QT2_EXPORT FieldOf<double> quantity(vrn::units::UnitId::UnitId kind);
VRN_QT2_EXPORT FieldOf<double> number(int decimals = 3);
VRN_QT2_EXPORT FieldOf<int> integer();
/// Members may be a QString, a `std::wstring`, or a `std::string` in UTF-8.
VRN_QT2_EXPORT FieldOf<QString> text();
VRN_QT2_EXPORT FieldOf<bool> flag();

/// One of the entries. Without entries every value is accepted.
template <typename T>
FieldOf<T> choice(const std::vector<std::pair<QString, T>>& entries = {})
{
    FieldOf<T> made(Field::Shape::Choice);
    made.entries(entries);
    return made;
}

/// Any type with `==`, edited by the editor that the application has registered.
template <typename T>
FieldOf<T> custom(const std::string& editor)
{
    FieldOf<T> made(Field::Shape::Custom);
    made.editor(editor);
    return made;
}

} // namespace field

} // namespace vrn::qt
