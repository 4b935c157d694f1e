#include "unit_systems.h"

#include <QCoreApplication>

namespace gallery {

vrn::qt::NamedValueList unitSystems()
{
    vrn::qt::NamedValueList systems;
    for (int system = 0; system < unitSystemCount; ++system) {
        const char* const name = system < 8 ? "System %1, metric" : "System %1, US customary";
        systems.emplace_back(QCoreApplication::translate("unit systems", name).arg(system), system);
    }
    return systems;
}

} // namespace gallery
