// Vectors of samples and all operations on them.
#pragma once

#include "simd/arithmetic.h"
#include "simd/memory.h"
#include "simd/order.h"
