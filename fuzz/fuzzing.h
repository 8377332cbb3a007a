// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <fuzzer/FuzzedDataProvider.h>

/// What every fuzzer is made of. Its file defines run().
namespace fuzz {

/// The bytes that the fuzzer makes up, taken as values one after the other.
using Input = FuzzedDataProvider;

/// Does the work with one input and checks what must hold of the outcome.
void run(Input& input);

/// Ends the fuzzer, which keeps the input, unless something holds.
void check(bool holds);

/// A text of any UTF-16 units, half surrogate pairs among them.
[[nodiscard]] QString takeText(Input& input);

} // namespace fuzz
