#include "support/test_object.h"

#include <QCoreApplication>
#include <QEvent>

#include <utility>

namespace vrn::test {

void TestObject::expectAssert(
    const std::string& expression, std::vector<std::string> valueNames, const std::string& message)
{
    m_asserts->expect(expression, std::move(valueNames), message);
}

void TestObject::expectWarning(const QString& text)
{
    m_warnings->expect(text);
}

void TestObject::init()
{
    m_asserts.emplace();
    m_warnings.emplace();
}

void TestObject::cleanup()
{
    // What a test has left to deleteLater() still belongs to that test.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    m_warnings.reset();
    m_asserts.reset();
}

} // namespace vrn::test
