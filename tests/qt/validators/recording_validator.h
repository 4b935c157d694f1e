#pragma once

#include <vrn/qt/i_validator.h>

#include <QStringList>

namespace vrn::test {

/// Answers every operation as it is told to, and remembers the last call. The
/// four operations can be told apart by their answers and in the log.
class RecordingValidator : public vrn::qt::IValidator
{
public:
    /// What `validate` and `validateWhenFinished` return.
    bool accepts = true;
    bool acceptsWhenFinished = true;
    /// What they put into the value; with `writes` clear they leave it alone.
    bool writes = true;
    boost::any parsed;
    boost::any parsedWhenFinished;
    /// What `reformat` and `reformatForDisplay` return.
    QString formatted;
    QString displayed;

    /// The names of the operations called, each after `name` if that is set.
    /// Several validators can share one log.
    QStringList* log = nullptr;
    QString name;

    QString lastText;
    boost::any lastValue;
    std::bitset<32> lastFlags;

    bool validate(const QString& text, boost::any& value, const std::bitset<32>& flags) override
    {
        note("validate", text, value, flags);
        if (writes)
            value = parsed;
        return accepts;
    }

    bool validateWhenFinished(
        const QString& text, boost::any& value, const std::bitset<32>& flags) override
    {
        note("validateWhenFinished", text, value, flags);
        if (writes)
            value = parsedWhenFinished;
        return acceptsWhenFinished;
    }

    QString reformat(const boost::any& value, const std::bitset<32>& flags) override
    {
        note("reformat", {}, value, flags);
        return formatted;
    }

    QString reformatForDisplay(const boost::any& value, const std::bitset<32>& flags) override
    {
        note("reformatForDisplay", {}, value, flags);
        return displayed;
    }

private:
    void note(const char* operation, const QString& text, const boost::any& value,
        const std::bitset<32>& flags)
    {
        lastText = text;
        lastValue = value;
        lastFlags = flags;
        if (log)
            log->append(name.isEmpty() ? QString(operation) : name + "." + operation);
    }
};

/// Flags in which no bit can get lost or trade places with its neighbours unseen.
inline const std::bitset<32> patternOfFlags(0xA5C3'3C5BU);

} // namespace vrn::test
