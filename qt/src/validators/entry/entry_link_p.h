#pragma once

#include <vrn/qt/i_validator.h>
#include <vrn/units/entry.h>

#include <boost/weak_ptr.hpp>

#include <QStringList>

#include "validators/wide_text_p.h"

#include <memory>

namespace vrn::qt::detail {

/// A validator for numbers, and the reader of what is typed for it. The validator must
/// exist in each call but isOf().
class EntryLink
{
public:
    struct Number
    {
        double value = 0.0; ///< In the scale of the bounds.
        QString text; ///< What the validator reads. Empty if it needs a whole number.
    };

    /// Whether `validator` is one of ours for numbers.
    static bool isForNumbers(const IValidator* validator);
    /// Null if it is not.
    static std::unique_ptr<EntryLink> create(const IValidator::pointer& validator);

    virtual ~EntryLink();
    EntryLink(const EntryLink&) = delete;
    EntryLink& operator=(const EntryLink&) = delete;

    bool isOf(const IValidator::pointer& validator) const;

    /// Whether the validator itself reads `text` as an entry. Most texts are such ones, and
    /// this takes less time than read().
    virtual bool isPlain(const WideText& text) = 0;
    virtual vrn::units::Entry read(const WideText& text);
    QStringList completions(const QString& text);

    /// The number of a complete entry.
    virtual Number numberOf(const vrn::units::Entry& entry) const = 0;

    /// Where `number` is out of the range: at the minimum or the maximum.
    bool isBelow(double number) const { return number < minimum(); }
    bool isAbove(double number) const { return number > maximum(); }
    /// The bounds as the validator writes them. Empty if there is none.
    QString minimumText() const { return boundText(minimum()); }
    QString maximumText() const { return boundText(maximum()); }

protected:
    explicit EntryLink(const IValidator::pointer& validator);

    virtual const vrn::units::EntryReader& reader() = 0;
    virtual double minimum() const = 0;
    virtual double maximum() const = 0;
    virtual boost::any valueOf(double bound) const = 0;

private:
    QString boundText(double bound) const;

    boost::weak_ptr<IValidator> m_owner;
    IValidator* m_validator;
};

} // namespace vrn::qt::detail
