// SPDX-License-Identifier: MIT
//
// What every fuzz target defines: it takes any bytes, returns 0, and must never crash, hang, leak
// or trip a sanitizer. The name is the fuzzer library's.
#pragma once

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);
