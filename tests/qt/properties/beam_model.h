#pragma once

#include <vrn/qt/object_model.h>

#include "beams.h"

#include <QStringList>

#include <functional>
#include <vector>

namespace vrn::test {

/// Beams with the keys from 0 on, and what the model was asked to do.
class BeamModel : public vrn::qt::ObjectModel
{
public:
    explicit BeamModel(
        int count = 0, const vrn::qt::PropertySet<Beam>& properties = beamProperties())
    {
        for (int i = 0; i < count; ++i)
            beams[std::uint64_t(i)].name = QStringLiteral("B%1").arg(i + 1);
        addKind(properties, &beams);
    }

    vrn::qt::ObjectIds ids() const { return objects(0); }

    void read(const vrn::qt::PropertyKeys& keys, const vrn::qt::ObjectIds& readIds,
        vrn::qt::PropertySink& sink) const override
    {
        ++reads;
        if (inRead)
            inRead(keys);
        ObjectModel::read(keys, readIds, sink);
    }

    Beams beams;
    /// Each call, as in "length of 0 2, load of 1".
    QStringList writes;
    mutable int reads = 0;
    std::function<void(const vrn::qt::PropertyKeys&)> inRead;
    /// Before anything is written; may throw.
    std::function<void()> beforeWrite;
    std::function<void()> afterWrite;

protected:
    void write(const std::vector<vrn::qt::PropertyEdit>& edits) override
    {
        QStringList parts;
        for (const vrn::qt::PropertyEdit& edit : edits) {
            QStringList keys;
            for (const vrn::qt::ObjectId& id : edit.ids)
                keys << QString::number(id.key);
            parts << QString::fromStdString(edit.key) + " of " + keys.join(' ');
        }
        writes << parts.join(", ");
        // Copies, because they may destroy the model.
        const auto before = beforeWrite;
        const auto after = afterWrite;
        if (before)
            before();
        ObjectModel::write(edits);
        if (after)
            after();
    }
};

} // namespace vrn::test
