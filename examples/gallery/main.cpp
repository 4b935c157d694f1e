#include <QCommandLineParser>
#include <QLocale>
#include <QPalette>
#include <QTextStream>
#include <QTimer>

#include "gallery_application.h"
#include "gallery_window.h"
#include "page.h"
#include "palettes.h"

using namespace gallery;

namespace {

constexpr int usageError = 2;

int listPages()
{
    QTextStream out(stdout);
    for (const Page& page : pages())
        out << page.name << '\t' << page.title << '\n';
    return EXIT_SUCCESS;
}

// Plain numbers use QLocale, quantities use the locale of the standard library.
bool useLocale(const QString& name)
{
    const QLocale locale(name);
    if (locale.language() == QLocale::C && name != QLatin1String("C"))
        return false;
    QLocale::setDefault(locale);
    qputenv("LC_ALL", name.toLatin1() + ".UTF-8");
    return true;
}

int complain(const QString& message)
{
    QTextStream(stderr) << "vrn-gallery: " << message << '\n';
    return usageError;
}

} // namespace

int main(int argc, char** argv)
{
    const QCommandLineOption listOption(
        QStringLiteral("list"), QStringLiteral("Print the names of the pages."));
    const QCommandLineOption pageOption(QStringLiteral("page"),
        QStringLiteral("Show the page NAME first."), QStringLiteral("NAME"));
    const QCommandLineOption screenshotOption(QStringLiteral("screenshot"),
        QStringLiteral("Save a picture of the window and quit."), QStringLiteral("FILE"));
    const QCommandLineOption localeOption(QStringLiteral("locale"),
        QStringLiteral("Use the locale NAME, such as de_DE, as the user's."),
        QStringLiteral("NAME"));
    const QCommandLineOption darkOption(
        QStringLiteral("dark"), QStringLiteral("Use light text on dark grounds."));
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("The controls of vrn_qt2, to be tried out."));
    parser.addHelpOption();
    parser.addOptions({listOption, pageOption, screenshotOption, localeOption, darkOption});

    // The locale must be set before the application object chooses translations. Other
    // arguments are checked when that object exists.
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    parser.parse(arguments);
    const QString locale = parser.value(localeOption);
    if (!locale.isEmpty() && !useLocale(locale))
        return complain(QStringLiteral("no locale \"%1\"").arg(locale));

    GalleryApplication application(argc, argv);
    application.setApplicationName(QStringLiteral("vrn-gallery"));
    parser.process(application);
    if (parser.isSet(listOption))
        return listPages();
    const QPalette palette = parser.isSet(darkOption) ? darkPalette() : QApplication::palette();
    QApplication::setPalette(withReadableDisabledText(palette));

    GalleryWindow window;
    QObject::connect(
        &application, &GalleryApplication::exceptionCaught, &window, &GalleryWindow::showException);
    QObject::connect(
        &application, &GalleryApplication::userActs, &window, &GalleryWindow::showHelp);
    if (parser.isSet(pageOption) && !window.showPage(parser.value(pageOption)))
        return complain(QStringLiteral("no page \"%1\", see --list").arg(parser.value(pageOption)));
    window.show();

    if (parser.isSet(screenshotOption)) {
        const QString file = parser.value(screenshotOption);
        // After the first paint.
        QTimer::singleShot(0, &window, [&window, file] {
            const bool saved = window.grab().save(file);
            QCoreApplication::exit(
                saved ? EXIT_SUCCESS : complain(QStringLiteral("cannot write ") + file));
        });
    }
    return QCoreApplication::exec();
}
