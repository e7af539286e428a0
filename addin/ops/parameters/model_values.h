// The values of a model that clients know by name: its parameters, and the dimensions of its solid.
//
// Main thread only. Nothing is kept: each search visits the model anew.
#pragma once

#include <ProDimension.h>
#include <ProParameter.h>

#include <string>
#include <vector>

namespace vek::parameters {

// The parameter or dimension of that name, case aside. False when the model has none.
bool FindParameter(ProModelitem& owner, const std::wstring& name, ProParameter& parameter);
bool FindDimension(ProMdl model, const std::wstring& symbol, ProDimension& dimension);

// The JSON object that shows it; empty when its value or its symbol can't be read.
std::wstring ParameterRow(ProParameter& parameter);
std::wstring DimensionRow(ProMdl model, ProDimension& dimension);

// The rows of all, in the host's order. False when the host can't list its parameters; one without parameters
// has listed them.
bool ListParameterRows(ProModelitem& owner, std::vector<std::wstring>& rows);
void ListDimensionRows(ProMdl model, std::vector<std::wstring>& rows);

// The name of a unit; empty when the host doesn't tell.
std::wstring UnitName(ProUnititem& unit);
// The unit in which a parameter is told, by the two ways of asking for it; empty when neither tells.
std::wstring ParameterUnitName(ProParameter& parameter);
// "deg" of an angle, else the model's length unit; empty when it can't be had.
std::wstring DimensionUnitName(ProMdl model, ProDimension& dimension);

// A value as a client would write it.
std::wstring ParameterValueText(const ProParamvalue& value, const std::wstring& unit);

}  // namespace vek::parameters
