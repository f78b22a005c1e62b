// Several vectors that take every step side by side. Where the steps form one long chain, each waiting for the one
// before, a processor sees too few of them at a time to overlap the chains of successive vectors by itself.
#pragma once

#include "simd/vec.h"

namespace q4 {

template <class V>
struct Bundle {
    static constexpr int vectors = 4;
    static constexpr int count = vectors * V::count;
    V v[vectors];

    Bundle() = default;
    MOX_INLINE Bundle(V x) {
        for (V& each : v) each = x;
    }

    MOX_INLINE friend Bundle operator+(Bundle a, Bundle b) {
        return eachOf([](V x, V y) { return x + y; }, a, b);
    }
    MOX_INLINE friend Bundle operator-(Bundle a, Bundle b) {
        return eachOf([](V x, V y) { return x - y; }, a, b);
    }
    MOX_INLINE friend Bundle operator*(Bundle a, Bundle b) {
        return eachOf([](V x, V y) { return x * y; }, a, b);
    }
    MOX_INLINE friend Bundle operator&(Bundle a, Bundle b) {
        return eachOf([](V x, V y) { return x & y; }, a, b);
    }
    MOX_INLINE friend Bundle operator|(Bundle a, Bundle b) {
        return eachOf([](V x, V y) { return x | y; }, a, b);
    }
    MOX_INLINE friend Bundle andNot(Bundle mask, Bundle b) {
        return eachOf([](V x, V y) { return andNot(x, y); }, mask, b);
    }
    MOX_INLINE friend Bundle gt(Bundle a, Bundle b) {
        return eachOf([](V x, V y) { return gt(x, y); }, a, b);
    }
};

using F32s = Bundle<F32>;
using I32s = Bundle<I32>;

/// The bundle of what an operation makes of the vectors of bundles.
template <class Operation, class... V>
MOX_INLINE auto eachOf(Operation operation, const Bundle<V>&... a) {
    Bundle<decltype(operation(a.v[0]...))> results;
    for (int i = 0; i < results.vectors; ++i) results.v[i] = operation(a.v[i]...);
    return results;
}

template <class To, class V>
MOX_INLINE Bundle<To> as(const Bundle<V>& a) {
    return eachOf([](V x) { return as<To>(x); }, a);
}
template <int n, class V>
MOX_INLINE Bundle<V> shl(const Bundle<V>& a) {
    return eachOf([](V x) { return shl<n>(x); }, a);
}
template <int n, class V>
MOX_INLINE Bundle<V> shr(const Bundle<V>& a) {
    return eachOf([](V x) { return shr<n>(x); }, a);
}
MOX_INLINE F32s toF32(const I32s& a) {
    return eachOf([](I32 x) { return toF32(x); }, a);
}
template <class V>
MOX_INLINE bool any(const Bundle<V>& mask) {
    V all = mask.v[0];
    for (int i = 1; i < mask.vectors; ++i) all = all | mask.v[i];
    return any(all);
}

template <class V>
MOX_INLINE Bundle<V> loadBundle(const void* p) {
    Bundle<V> a;
    for (int i = 0; i < a.vectors; ++i) a.v[i] = load<V>(static_cast<const uint8_t*>(p) + i * vectorBytes);
    return a;
}
template <class V>
MOX_INLINE void store(void* p, const Bundle<V>& a) {
    for (int i = 0; i < a.vectors; ++i) store(static_cast<uint8_t*>(p) + i * vectorBytes, a.v[i]);
}

}  // namespace q4
