#pragma once

#include <vrn/qt/object_model.h>
#include <vrn/qt/property_set.h>

#include <boost/optional.hpp>

#include <QString>

#include <cstdint>
#include <cstring>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>

namespace vrn::test {

enum class Support
{
    Fixed,
    Pinned,
    Free
};

/// An object with a member of every type that a field can have.
struct Beam
{
    QString name;
    std::string grade = "S235"; // in UTF-8
    std::wstring comment;
    double length = 3.0; // m
    double width = 200.0; // mm
    double factor = 1.0;
    int bolts = 1;
    Support support = Support::Fixed;
    bool isActive = true;
    std::optional<double> load; // kN/m
    boost::optional<int> group;

    double area() const { return length * width; }
    double camber() const { return m_camber; }
    void setCamber(double camber)
    {
        if (camber < 0.0)
            throw std::runtime_error("a beam does not sag on purpose");
        m_camber = camber;
    }

private:
    double m_camber = 0.0;
};

using Beams = std::map<std::uint64_t, Beam>;

inline QString countedBeams(int count)
{
    return QStringLiteral("%1 beam%2").arg(count).arg(count == 1 ? "" : "s");
}

inline vrn::qt::PropertySet<Beam> beamProperties(const std::string& key = "beam")
{
    namespace field = vrn::qt::field;
    namespace UnitId = vrn::units::UnitId;
    const auto odd = [](int bolts) {
        return bolts % 2 ? QString() : QStringLiteral("Bolts come in odd numbers.");
    };

    vrn::qt::PropertySet<Beam> beams(key, &countedBeams);
    beams.section("general", "General")
        .add("name", "&Name", &Beam::name, field::text().maxLength(20))
        .add("grade", "&Grade", &Beam::grade, field::text())
        .add("comment", "&Comment", &Beam::comment, field::text())
        .add("active", "&Active", &Beam::isActive, field::flag());
    beams.section("geometry", "Geometry")
        .add("length", "&Length", &Beam::length,
            field::quantity(UnitId::GEO_LENGTH).between(0.1, 40.0))
        .add("width", "&Width", &Beam::width,
            field::quantity(UnitId::SECT_LENGTH).storedIn(UnitId::MILLIMETRE).between(0.05, 3.0))
        .add("factor", "&Factor", &Beam::factor, field::number(2))
        .add("bolts", "&Bolts", &Beam::bolts, field::integer().between(1, 99).accept(odd))
        .add("area", "Area", &Beam::area, field::number().computedFrom({"length", "width"}));
    beams.section("statics", "Statics", false)
        .add("support", "&Support", &Beam::support,
            field::choice<Support>({{"fixed", Support::Fixed}, {"pinned", Support::Pinned}}))
        .add("load", "L&oad", &Beam::load, field::quantity(UnitId::LOAD_LINE))
        .add("group", "Gr&oup", &Beam::group, field::integer())
        .add("camber", "Ca&mber", &Beam::camber, &Beam::setCamber, field::number());
    return beams;
}

template <typename T>
bool haveSameBits(const T& a, const T& b)
{
    static_assert(std::is_trivially_copyable_v<T>);
    return std::memcmp(&a, &b, sizeof(T)) == 0;
}

} // namespace vrn::test
