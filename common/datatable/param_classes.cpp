#include "common/datatable/param_classes.h"

#include <array>
#include <cstddef>

namespace dataparamtype {

namespace {

using Name = std::string_view;

constexpr std::array<Name, 6> kKinds = {"None", "X", "Y", "Z", "Composed", "Scalar"};

constexpr std::array<Name, 9> kQuantityClasses = {
    "None", "Length", "Pressure", "Flux", "Stress", "Strain", "Heat", "Concentration", "Other"};

constexpr std::array<Name, 41> kCategories = {"General",
                                              "Geometry",
                                              "Time",
                                              "SoilState",
                                              "Displacements",
                                              "TotalStresses",
                                              "EffectiveStresses",
                                              "Strains",
                                              "Consolidation",
                                              "Stiffness",
                                              "Strength",
                                              "Structures",
                                              "Motion",
                                              "DynamicStresses",
                                              "WaveProperties",
                                              "Liquefaction",
                                              "Spectra",
                                              "WaterPressures",
                                              "WaterFluxes",
                                              "HydraulicProperties",
                                              "WaterBalance",
                                              "Climate",
                                              "Temperatures",
                                              "HeatFluxes",
                                              "ThermalProperties",
                                              "Concentrations",
                                              "SoluteFluxes",
                                              "SoluteProperties",
                                              "SoluteBalance",
                                              "GasPressures",
                                              "GasFluxes",
                                              "GasProperties",
                                              "GasBalance",
                                              "SliceGeometry",
                                              "SliceForces",
                                              "SliceStresses",
                                              "SliceStrength",
                                              "SafetyFactors",
                                              "Reinforcement",
                                              "Reliability",
                                              "Sampling"};

constexpr std::array<Name, 7> kGraphMethods = {
    "AsStored",   "FromGaussPoints", "FromRecoveredNodes", "FromNodes",
    "PerElement", "Accumulated",     "FromComponents"};

struct UnitRow {
    Name name;
    Name symbol;
};

constexpr std::array<UnitRow, 39> kUnits = {{{"None", ""},
                                             {"Acceleration", "m/s²"},
                                             {"Angle", "°"},
                                             {"Area", "m²"},
                                             {"BendingStiffness", "N·m²"},
                                             {"Concentration", "kg/m³"},
                                             {"ConcentrationGradient", "kg/m⁴"},
                                             {"Density", "kg/m³"},
                                             {"Diffusivity", "m²/s"},
                                             {"Energy", "J"},
                                             {"EnergyDensity", "J/m³"},
                                             {"Force", "N"},
                                             {"ForcePerLength", "N/m"},
                                             {"HeatCapacity", "J/(m³·K)"},
                                             {"HeatFlow", "W"},
                                             {"HeatFlux", "W/m²"},
                                             {"Length", "m"},
                                             {"Mass", "kg"},
                                             {"MassFlow", "kg/s"},
                                             {"MassFlux", "kg/(m²·s)"},
                                             {"MassProduction", "kg/(m³·s)"},
                                             {"Moment", "N·m"},
                                             {"PerLength", "1/m"},
                                             {"PerPressure", "1/Pa"},
                                             {"PerTime", "1/s"},
                                             {"Pressure", "Pa"},
                                             {"PressureGradient", "Pa/m"},
                                             {"SpecificVolume", "m³/kg"},
                                             {"Temperature", "°C"},
                                             {"TemperatureDifference", "K"},
                                             {"TemperatureGradient", "K/m"},
                                             {"TemperatureTime", "K·s"},
                                             {"ThermalConductivity", "W/(m·K)"},
                                             {"Time", "s"},
                                             {"UnitWeight", "N/m³"},
                                             {"Velocity", "m/s"},
                                             {"Viscosity", "Pa·s"},
                                             {"Volume", "m³"},
                                             {"VolumeFlow", "m³/s"}}};

template <class Value, std::size_t N>
Name Pick(const std::array<Name, N>& names, Value value) {
    const auto index = static_cast<std::size_t>(value);
    return index < N ? names[index] : Name();
}

const UnitRow& RowOf(UnitKind unit) {
    static constexpr UnitRow kUnknown = {"", ""};
    const auto index = static_cast<std::size_t>(unit);
    return index < kUnits.size() ? kUnits[index] : kUnknown;
}

}  // namespace

std::string_view NameOf(Kind kind) noexcept {
    return Pick(kKinds, kind);
}

std::string_view NameOf(QuantityClass quantity) noexcept {
    return Pick(kQuantityClasses, quantity);
}

std::string_view NameOf(Category::Type category) noexcept {
    return Pick(kCategories, category);
}

std::string_view NameOf(PreferredGraphCalculationMethod::Type method) noexcept {
    return Pick(kGraphMethods, method);
}

std::string_view NameOf(UnitKind unit) noexcept {
    return RowOf(unit).name;
}

std::string_view SymbolOf(UnitKind unit) noexcept {
    return RowOf(unit).symbol;
}

}  // namespace dataparamtype
