#pragma once

#include "injection/scene.h"

#include <vrn/qt/conversion_validator.h>
#include <vrn/qt/i_layouter.h>
#include <vrn/qt/value_history.h>

#include <boost/make_shared.hpp>

#include <QVBoxLayout>

namespace vrn::test::injection {

/// Decimal digits are an `int`, no text is no value. Brings a number down to 500 when
/// editing ends.
struct ForeignValidator : public vrn::qt::IValidator
{
    ForeignValidator()
    {
        for (const char* place : {"validate", "validateWhenFinished", "reformat"})
            scene().offer(place);
        replaceHint();
        scene().replaceFunctions = [self = std::weak_ptr(m_self)] {
            if (const auto validator = self.lock())
                (*validator)->replaceHint();
        };
    }

    bool validate(const QString& text, boost::any& value, const std::bitset<32>&) override
    {
        scene().visit("validate");
        return parse(text, value);
    }

    bool validateWhenFinished(
        const QString& text, boost::any& value, const std::bitset<32>&) override
    {
        scene().visit("validateWhenFinished");
        const bool ok = parse(text, value);
        if (const int* number = boost::any_cast<int>(&value))
            value = std::min(*number, 500);
        return ok;
    }

    QString reformat(const boost::any& value, const std::bitset<32>&) override
    {
        scene().visit("reformat");
        const int* number = boost::any_cast<int>(&value);
        return number ? QString::number(*number) : QString();
    }

    /// A new hint function takes the place of the one that may be running.
    void replaceHint()
    {
        scene().offer("the edit hint");
        setEditHintFunction([held = std::make_shared<int>(1)](const QString& text) {
            scene().visit("the edit hint");
            return text.isEmpty() ? QString() : QString("hint %1").arg(*held);
        });
    }

private:
    static bool parse(const QString& text, boost::any& value)
    {
        if (text.isEmpty())
            return true;
        bool ok = false;
        const int number = text.toInt(&ok);
        if (ok)
            value = number;
        return ok;
    }

    std::shared_ptr<ForeignValidator*> m_self = std::make_shared<ForeignValidator*>(this);
};

/// A ForeignValidator whose value is converted on the way.
struct ForeignConversion : public vrn::qt::ConversionValidator
{
    ForeignConversion()
        : ConversionValidator(boost::make_shared<ForeignValidator>())
    {
        replaceFunctions();
        scene().replaceFunctions = [self = std::weak_ptr(m_self)] {
            if (const auto validator = self.lock())
                (*validator)->replaceFunctions();
        };
    }

    void replaceFunctions()
    {
        const auto held = std::make_shared<int>(1);
        const auto visiting = [held](const char* place) {
            scene().offer(place);
            return [held, place](boost::any&) {
                scene().visit(place);
                ++*held;
            };
        };
        setConversionFn(
            visiting("the conversion to display"), visiting("the conversion from display"));
    }

private:
    std::shared_ptr<ForeignConversion*> m_self = std::make_shared<ForeignConversion*>(this);
};

/// Keeps its values by itself, as a storage in a file does.
struct ForeignStorage final : public vrn::IValueHistoryStorage
{
    std::size_t get(const vrn::ValueHistory&, std::deque<std::wstring>& values) override
    {
        scene().visit("the history storage's get");
        values = m_values;
        return values.size();
    }

    void add(const vrn::ValueHistory&, const std::wstring& value) override
    {
        scene().visit("the history storage's add");
        m_values.push_front(value);
    }

private:
    std::deque<std::wstring> m_values = {L"12", L"34"};
};

/// A history that holds the only reference to its storage.
inline boost::shared_ptr<vrn::ValueHistory> foreignHistory()
{
    scene().offer("the history storage's get");
    scene().offer("the history storage's add");
    return boost::make_shared<vrn::ValueHistory>(L"key", boost::make_shared<ForeignStorage>());
}

struct ForeignLayouter : public vrn::qt::ILayouter
{
    ForeignLayouter()
    {
        for (const char* place :
            {"the layouter's onCreate", "the layouter's onAdd", "the layouter's onFinish"})
            scene().offer(place);
    }

    void onCreate(QWidget* parent) override
    {
        scene().visit("the layouter's onCreate");
        m_layout = new QVBoxLayout(parent);
    }

    void onAdd(QWidget* widget) override
    {
        scene().visit("the layouter's onAdd");
        if (m_layout)
            m_layout->addWidget(widget);
    }

    void onFinish() override { scene().visit("the layouter's onFinish"); }

private:
    QPointer<QVBoxLayout> m_layout;
};

/// A function that holds something whose end is foreign code, too.
template <typename Function>
auto holdingSomething(Function function)
{
    scene().offer("the end of a button's function");
    const std::shared_ptr<void> held(
        nullptr, [](void*) { scene().visit("the end of a button's function"); });
    return [held, function = std::move(function)](auto&&... arguments)
               -> decltype(std::declval<const Function&>()(
                   std::forward<decltype(arguments)>(arguments)...)) {
        return function(std::forward<decltype(arguments)>(arguments)...);
    };
}

inline bool foreignEqual(const boost::any& a, const boost::any& b)
{
    scene().visit("the equality function");
    const int* left = boost::any_cast<int>(&a);
    const int* right = boost::any_cast<int>(&b);
    return left && right && *left == *right;
}

inline bool foreignLess(const boost::any& a, const boost::any& b)
{
    scene().visit("the order function");
    const int* left = boost::any_cast<int>(&a);
    const int* right = boost::any_cast<int>(&b);
    return left && right && *left < *right;
}

} // namespace vrn::test::injection
