#include <vrn/companion_qt/translator.h>

#include <QCoreApplication>
#include <QLocale>
#include <QStringList>
#include <QTranslator>

namespace {

QStringList& announcedKeys()
{
    static QStringList keys;
    return keys;
}

void install(const QString& key)
{
    auto* translator = new QTranslator(QCoreApplication::instance());
    const QString folders[] = {QStringLiteral(":/translations"),
        QCoreApplication::applicationDirPath() + QStringLiteral("/translations")};
    for (const QString& folder : folders) {
        if (translator->load(QLocale(), key, QStringLiteral("_"), folder)) {
            QCoreApplication::installTranslator(translator);
            return;
        }
    }
    delete translator;
}

// Runs for each new application object, which owns its translators.
void installAnnounced()
{
    for (const QString& key : announcedKeys())
        install(key);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(installAnnounced)

bool VRN_QT_InitTranslator(const char* key)
{
    const QString name = QString::fromLatin1(key);
    if (!announcedKeys().contains(name)) {
        announcedKeys().append(name);
        if (QCoreApplication::instance())
            install(name);
    }
    return true;
}
