#pragma once

// Physical units: a set of units, one for each basic quantity, and the conversion of values between
// such a set and SI. Analyses work in the units of their project; constants of the library are SI.

#include "common/export.h"

#include <cstdint>

namespace math {

/// What a number measures, as far as its conversion is concerned.
enum class Quantity : std::int32_t {
    kNone = 0,            ///< a pure number; never converted
    kLength,              ///< m
    kPressure,            ///< Pa; also stress, and absolute pressure
    kTemperature,         ///< K, with an offset in sets that count from elsewhere
    kTime,                ///< s
    kForce,               ///< N
    kMass,                ///< kg
    kEnergy,              ///< J
    kUnitWeight,          ///< force / length^3
    kSpring,              ///< force / length
    kUnitFlux,            ///< length / time: water or air through a unit area
    kVolumetricFlowRate,  ///< length^3 / time
    kConcentration,       ///< mass / length^3
    kMassRate,            ///< mass / time
    kMassUnitFlux,        ///< mass / (length^2 time)
    kEnergyRate,          ///< energy / time
    kEnergyUnitFlux,      ///< energy / (length^2 time)
};

/// One unit for each basic quantity, given by its size in SI units. A plain value.
/// Default-constructed: SI itself (m, Pa, K, s, N, kg, J). The fields may be set one by one; sizes
/// are positive and finite.
struct UnitSet {
    double length = 1.0;            ///< metres in one unit of length
    double pressure = 1.0;          ///< pascals in one unit of pressure
    double time = 1.0;              ///< seconds in one unit of time
    double force = 1.0;             ///< newtons in one unit of force
    double mass = 1.0;              ///< kilograms in one unit of mass
    double energy = 1.0;            ///< joules in one unit of energy
    double temperature = 1.0;       ///< kelvins in one degree
    double temperature_zero = 0.0;  ///< the temperature 0 of the set, in kelvins

    /// A value of the set in SI, and back. Products (unit weight and so on) are built from the
    /// basic units. The undefined value stays undefined.
    [[nodiscard]] LMW_API double ToSi(Quantity quantity, double value) const noexcept;
    [[nodiscard]] LMW_API double FromSi(Quantity quantity, double value) const noexcept;

    /// m, kPa, degrees Celsius, s, kN, kg, kJ.
    [[nodiscard]] LMW_API static UnitSet KiloPascal() noexcept;
    /// m, Pa, degrees Celsius, s, N, kg, J.
    [[nodiscard]] LMW_API static UnitSet Pascal() noexcept;
    /// ft, pounds-force per square foot, degrees Fahrenheit, s, lbf, lb, Btu (International Table).
    [[nodiscard]] LMW_API static UnitSet PoundsPerSquareFoot() noexcept;
    /// ft, pounds-force per square inch, degrees Fahrenheit, s, lbf, lb, Btu (International Table).
    [[nodiscard]] LMW_API static UnitSet PoundsPerSquareInch() noexcept;
    /// As KiloPascal, pressures in metres of water (1000 kg/m^3 under standard gravity, 9806.65
    /// Pa).
    [[nodiscard]] LMW_API static UnitSet MetresOfWater() noexcept;
    /// As PoundsPerSquareFoot, pressures in feet of water (0.3048 metres of water).
    [[nodiscard]] LMW_API static UnitSet FeetOfWater() noexcept;
};

}  // namespace math
