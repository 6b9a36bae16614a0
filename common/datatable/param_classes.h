#pragma once

// The properties by which the registry sorts its parameters: kind, quantity class, category, graph
// method, unit kind. The numbers are stored in files and fixed; the names are lookup names, not
// texts for a user.

#include "common/export.h"

#include <cstdint>
#include <string_view>

namespace dataparamtype {

/// How a parameter is built from others.
enum class Kind : std::uint32_t {
    None = 0,      ///< of the null parameter and of values not registered
    X = 1,         ///< first part of a vector; xx or xy of a tensor
    Y = 2,         ///< second part of a vector; yy or yz of a tensor
    Z = 3,         ///< third part of a vector; zz or zx of a tensor
    Composed = 4,  ///< made of the unbroken run of parts directly below it
    Scalar = 5,    ///< stands alone
};

/// What class of quantity a parameter is.
enum class QuantityClass : std::uint32_t {
    None = 0,           ///< counts, ratios and identifiers
    Length = 1,         ///< lengths and coordinates
    Pressure = 2,       ///< pressure or head of a fluid
    Flux = 3,           ///< fluxes and rates
    Stress = 4,         ///< stresses
    Strain = 5,         ///< strains
    Heat = 6,           ///< temperatures and heat
    Concentration = 7,  ///< concentrations and masses of substances
    Other = 8,          ///< any other quantity with a unit
};

/// Under which heading a parameter is listed.
namespace Category {
enum Type : std::uint32_t {
    General = 0,
    Geometry = 1,
    Time = 2,
    SoilState = 3,
    Displacements = 4,
    TotalStresses = 5,
    EffectiveStresses = 6,
    Strains = 7,
    Consolidation = 8,
    Stiffness = 9,
    Strength = 10,
    Structures = 11,
    Motion = 12,
    DynamicStresses = 13,
    WaveProperties = 14,
    Liquefaction = 15,
    Spectra = 16,
    WaterPressures = 17,
    WaterFluxes = 18,
    HydraulicProperties = 19,
    WaterBalance = 20,
    Climate = 21,
    Temperatures = 22,
    HeatFluxes = 23,
    ThermalProperties = 24,
    Concentrations = 25,
    SoluteFluxes = 26,
    SoluteProperties = 27,
    SoluteBalance = 28,
    GasPressures = 29,
    GasFluxes = 30,
    GasProperties = 31,
    GasBalance = 32,
    SliceGeometry = 33,
    SliceForces = 34,
    SliceStresses = 35,
    SliceStrength = 36,
    SafetyFactors = 37,
    Reinforcement = 38,
    Reliability = 39,
    Sampling = 40,
};
}  // namespace Category

/// How a graph along a line through the mesh should find the parameter's values.
namespace PreferredGraphCalculationMethod {
enum Type : std::uint32_t {
    AsStored = 0,            ///< the rows as they are, nothing in between
    FromGaussPoints = 1,     ///< extrapolated from the integration points to the nodes, averaged
                             ///< there between the elements, then interpolated
    FromRecoveredNodes = 2,  ///< interpolated between node values that the solver itself recovered
    FromNodes = 3,           ///< interpolated between the values at the nodes
    PerElement = 4,          ///< constant within each element
    Accumulated = 5,         ///< the running total at the end of the step
    FromComponents = 6,      ///< the parts interpolated one by one, then composed
};
}  // namespace PreferredGraphCalculationMethod

/// What a value is measured in. Tables hold numbers in the units of the project; the kind says
/// which of them. The symbol is that of the kind's coherent SI unit (degrees Celsius for
/// temperatures, degrees for angles).
enum class UnitKind : std::uint32_t {
    None,
    Acceleration,
    Angle,
    Area,
    BendingStiffness,
    Concentration,
    ConcentrationGradient,
    Density,
    Diffusivity,
    Energy,
    EnergyDensity,
    Force,
    ForcePerLength,
    HeatCapacity,  ///< volumetric
    HeatFlow,
    HeatFlux,
    Length,
    Mass,
    MassFlow,
    MassFlux,
    MassProduction,
    Moment,
    PerLength,
    PerPressure,
    PerTime,
    Pressure,
    PressureGradient,
    SpecificVolume,
    Temperature,
    TemperatureDifference,  ///< converts without the offset of the temperature scale
    TemperatureGradient,
    TemperatureTime,
    ThermalConductivity,
    Time,
    UnitWeight,
    Velocity,
    Viscosity,
    Volume,
    VolumeFlow,
};

/// The name of the enumerator; empty for a value that has none.
LMW_API std::string_view NameOf(Kind kind) noexcept;
LMW_API std::string_view NameOf(QuantityClass quantity) noexcept;
LMW_API std::string_view NameOf(Category::Type category) noexcept;
LMW_API std::string_view NameOf(PreferredGraphCalculationMethod::Type method) noexcept;
LMW_API std::string_view NameOf(UnitKind unit) noexcept;

/// The symbol of the unit kind's SI unit in UTF-8, for example "m/s"; empty for UnitKind::None.
LMW_API std::string_view SymbolOf(UnitKind unit) noexcept;

}  // namespace dataparamtype
