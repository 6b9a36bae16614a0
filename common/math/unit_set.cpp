#include "common/math/unit_set.h"

#include "common/undefined.h"

namespace math {

namespace {

// Exact by definition: the international foot and pound, standard gravity (CGPM 1901), the
// International Table Btu (1956).
constexpr double kFoot = 0.3048;
constexpr double kPound = 0.45359237;
constexpr double kStandardGravity = 9.80665;
constexpr double kPoundForce = kPound * kStandardGravity;
constexpr double kBtu = 1055.05585262;
constexpr double kMetreOfWater = 1000.0 * kStandardGravity;
constexpr double kCelsiusZero = 273.15;
constexpr double kFahrenheitDegree = 5.0 / 9.0;
constexpr double kFahrenheitZero = 459.67 * 5.0 / 9.0;

// The SI size of one unit of `quantity`.
double UnitSize(const UnitSet& set, Quantity quantity) noexcept {
    const double area = set.length * set.length;
    const double volume = area * set.length;
    switch (quantity) {
        case Quantity::kNone:
            return 1.0;
        case Quantity::kLength:
            return set.length;
        case Quantity::kPressure:
            return set.pressure;
        case Quantity::kTemperature:
            return set.temperature;
        case Quantity::kTime:
            return set.time;
        case Quantity::kForce:
            return set.force;
        case Quantity::kMass:
            return set.mass;
        case Quantity::kEnergy:
            return set.energy;
        case Quantity::kUnitWeight:
            return set.force / volume;
        case Quantity::kSpring:
            return set.force / set.length;
        case Quantity::kUnitFlux:
            return set.length / set.time;
        case Quantity::kVolumetricFlowRate:
            return volume / set.time;
        case Quantity::kConcentration:
            return set.mass / volume;
        case Quantity::kMassRate:
            return set.mass / set.time;
        case Quantity::kMassUnitFlux:
            return set.mass / (area * set.time);
        case Quantity::kEnergyRate:
            return set.energy / set.time;
        case Quantity::kEnergyUnitFlux:
            return set.energy / (area * set.time);
    }
    return 1.0;
}

double ZeroPoint(const UnitSet& set, Quantity quantity) noexcept {
    return quantity == Quantity::kTemperature ? set.temperature_zero : 0.0;
}

}  // namespace

double UnitSet::ToSi(Quantity quantity, double value) const noexcept {
    return lmw::IsDefined(value) ? value * UnitSize(*this, quantity) + ZeroPoint(*this, quantity)
                                 : value;
}

double UnitSet::FromSi(Quantity quantity, double value) const noexcept {
    return lmw::IsDefined(value) ? (value - ZeroPoint(*this, quantity)) / UnitSize(*this, quantity)
                                 : value;
}

UnitSet UnitSet::Pascal() noexcept {
    UnitSet set;
    set.temperature_zero = kCelsiusZero;
    return set;
}

UnitSet UnitSet::KiloPascal() noexcept {
    UnitSet set = Pascal();
    set.pressure = 1000.0;
    set.force = 1000.0;
    set.energy = 1000.0;
    return set;
}

UnitSet UnitSet::PoundsPerSquareFoot() noexcept {
    UnitSet set;
    set.length = kFoot;
    set.pressure = kPoundForce / (kFoot * kFoot);
    set.force = kPoundForce;
    set.mass = kPound;
    set.energy = kBtu;
    set.temperature = kFahrenheitDegree;
    set.temperature_zero = kFahrenheitZero;
    return set;
}

UnitSet UnitSet::PoundsPerSquareInch() noexcept {
    constexpr double kInch = kFoot / 12.0;
    UnitSet set = PoundsPerSquareFoot();
    set.pressure = kPoundForce / (kInch * kInch);
    return set;
}

UnitSet UnitSet::MetresOfWater() noexcept {
    UnitSet set = KiloPascal();
    set.pressure = kMetreOfWater;
    return set;
}

UnitSet UnitSet::FeetOfWater() noexcept {
    UnitSet set = PoundsPerSquareFoot();
    set.pressure = kFoot * kMetreOfWater;
    return set;
}

}  // namespace math
