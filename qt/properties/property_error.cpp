#include <vrn/qt/property_error.h>

#include <QCoreApplication>

namespace vrn::qt {

PropertyError::PropertyError(const QString& reason)
    : std::runtime_error(reason.toStdString())
{}

PropertyError::~PropertyError() = default;

PropertyError PropertyError::from(const std::exception_ptr& thrown)
{
    try {
        std::rethrow_exception(thrown);
    } catch (const PropertyError& error) {
        return error;
    } catch (const std::exception& error) {
        return PropertyError(QString::fromUtf8(error.what()));
    } catch (...) {
        return PropertyError(
            QCoreApplication::translate("PropertyError", "The application has refused this."));
    }
}

} // namespace vrn::qt
