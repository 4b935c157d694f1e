#include <vrn/qt/double_edit_validator.h>
#include <vrn/qt/simple_line_edit.h>

#include <QApplication>
#include <QDebug>
#include <QVBoxLayout>

using namespace vrn::qt;

int main(int argc, char** argv)
{
    QApplication application(argc, argv);

    QWidget form;
    auto* layout = new QVBoxLayout(&form);

    // Two decimals, 0 to 100; empty text is refused.
    auto* span = SimpleLineEdit::create(&form, QStringLiteral("&Span"),
        new DoubleEditValidator(2, 0.0, 100.0, false), 0, ExpandHorizontal);
    span->setUnitString(QStringLiteral("m"));
    span->setValue(12.5);
    layout->addWidget(span);

    QObject::connect(span, &SimpleLineEdit::valueChanged, span, [span] {
        if (span->isValueValid())
            qDebug() << "Span:" << boost::any_cast<double>(span->getValue());
    });

    form.show();
    return application.exec();
}
