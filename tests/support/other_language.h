#pragma once

#include <QCoreApplication>
#include <QTranslator>

namespace vrn::test {

/// A language with a word of its own for the text of a varying selection.
class OtherLanguage : public QTranslator
{
public:
    QString translate(const char* /*context*/, const char* source, const char* /*comment*/,
        int /*count*/) const override
    {
        return qstrcmp(source, "*VARIES*") == 0 ? QStringLiteral("*VERSCHIEDEN*") : QString();
    }
    bool isEmpty() const override { return false; }

    /// From the language of the program to this one, or back. As with any change
    /// of the language, widgets learn of it from the event loop.
    void change()
    {
        m_isInUse = !m_isInUse;
        if (m_isInUse)
            QCoreApplication::installTranslator(this);
        else
            QCoreApplication::removeTranslator(this);
    }

private:
    bool m_isInUse = false;
};

/// Tells the widgets of a change of the language.
inline void deliverLanguage()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LanguageChange);
}

} // namespace vrn::test
