#pragma once

#include <vrn/qt/entry_validator.h>
#include <vrn/qt/simple_line_edit.h>
#include <vrn/qt/unit_validator.h>

#include <QLabel>
#include <QListWidget>

#include "controls/popups/entry_popup_p.h"
#include "qt/controls/popups/popup_fixture.h"

namespace vrn::test {

/// A window with a plain field and one of lengths that offers units.
struct EntryForm
{
    EntryForm()
        : validator(
            boost::make_shared<vrn::qt::EntryValidator>(boost::make_shared<vrn::qt::UnitValidator>(
                vrn::units::Context(), vrn::units::UnitId::GEO_LENGTH)))
        , field(vrn::qt::SimpleLineEdit::create(
              &window, QString(), validator, 0, vrn::qt::ExpandHorizontal))
        , edit(field->edit())
        , other(new QLineEdit)
    {
        field->setCompletions([this](const QString& text) { return validator->completions(text); });
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(field);
        layout->addWidget(other);
    }

    bool showActive()
    {
        window.show();
        window.activateWindow();
        const bool isActive = QTest::qWaitForWindowActive(&window);
        edit->setFocus();
        return isActive && edit->hasFocus();
    }

    vrn::qt::detail::EntryPopup* popup() const
    {
        return edit->findChild<vrn::qt::detail::EntryPopup*>();
    }

    /// What the list offers while it is seen.
    QStringList offered() const
    {
        QStringList texts;
        const auto* list = popup() ? popup()->findChild<QListWidget*>() : nullptr;
        for (int row = 0; list && list->isVisible() && row < list->count(); ++row)
            texts.append(list->item(row)->text());
        return texts;
    }

    QString hint() const
    {
        const auto* label = popup() ? popup()->findChild<QLabel*>() : nullptr;
        return label && label->isVisible() ? label->text() : QString();
    }

    QWidget window;
    boost::shared_ptr<vrn::qt::EntryValidator> validator;
    vrn::qt::SimpleLineEdit* field;
    QLineEdit* edit;
    QLineEdit* other;
};

} // namespace vrn::test
