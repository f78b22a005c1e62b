// A block of pixels in vectors, and rules applied to it.
//
// A block holds N pixels, one vector or more a channel. Lane l of every vector holds pixels of the l-th part of the
// block (N / lanes pixels), so that widening and narrowing, which are lane-local, keep the order.
#pragma once

#include <concepts>

#include "simd/vec.h"

namespace q4 {

/// N samples of one channel.
template <class T, int N>
struct Channel {
    static constexpr int vectors = N * int(sizeof(T)) / vectorBytes;
    static_assert(vectors >= 1);
    Vec<T> v[vectors];
};

/// N pixels of C channels.
template <class T, int C, int N>
struct Block {
    static constexpr int channels = C;
    Channel<T, N> c[C];
};

/// One vector of pixels as a rule sees them: a vector a channel.
template <class V, int C>
struct Px {
    V c[C];
};

template <class V>
Px(V) -> Px<V, 1>;
template <class V>
Px(V, V, V) -> Px<V, 3>;
template <class V>
Px(V, V, V, V) -> Px<V, 4>;

// ---- between samples and the lanes that a rule works on -------------------------------------------------------------

/// All of a channel's samples on vectors of type L.
template <class L, class T, int N>
MOX_INLINE auto spread(const Channel<T, N>& from) {
    struct {
        L v[N / L::count];
    } to;
    constexpr int n = N / L::count;
    if constexpr (std::is_same_v<L, Vec<T>>) {
        for (int i = 0; i < n; ++i) to.v[i] = from.v[i];
    } else if constexpr (std::is_same_v<L, F32>) {
        const auto ints = spread<I32>(from);
        for (int i = 0; i < n; ++i) to.v[i] = toF32(ints.v[i]);
    } else if constexpr (std::is_same_v<L, U8p8>) {
        for (int i = 0; i < n / 2; ++i) to.v[2 * i] = fixedLo(from.v[i]), to.v[2 * i + 1] = fixedHi(from.v[i]);
    } else if constexpr (sizeof(T) == 1 && sizeof(typename L::Sample) == 2) {
        for (int i = 0; i < n / 2; ++i)
            to.v[2 * i] = as<L>(widenLo(from.v[i])), to.v[2 * i + 1] = as<L>(widenHi(from.v[i]));
    } else if constexpr (sizeof(T) == 1) {
        const auto words = spread<U16>(from);
        for (int i = 0; i < n / 2; ++i) to.v[2 * i] = widenLo(words.v[i]), to.v[2 * i + 1] = widenHi(words.v[i]);
    } else {
        for (int i = 0; i < n / 2; ++i) to.v[2 * i] = widenLo(from.v[i]), to.v[2 * i + 1] = widenHi(from.v[i]);
    }
    return to;
}

/// The samples of a channel from n vectors of results; integers saturate to the sample's range.
template <class T, class L, int n>
MOX_INLINE auto collect(const L (&from)[n]) {
    Channel<T, n * L::count> to;
    constexpr int vectors = to.vectors;
    if constexpr (std::is_same_v<L, Vec<T>>) {
        for (int i = 0; i < vectors; ++i) to.v[i] = from[i];
    } else if constexpr (std::is_same_v<T, uint8_t> && sizeof(typename L::Sample) == 2) {
        for (int i = 0; i < vectors; ++i) to.v[i] = narrowU8(as<I16>(from[2 * i]), as<I16>(from[2 * i + 1]));
    } else if constexpr (std::is_same_v<T, uint8_t>) {
        for (int i = 0; i < vectors; ++i)
            to.v[i] = narrowU8(narrowI16(from[4 * i], from[4 * i + 1]), narrowI16(from[4 * i + 2], from[4 * i + 3]));
    } else if constexpr (std::is_same_v<T, uint16_t>) {
        for (int i = 0; i < vectors; ++i) to.v[i] = narrowU16(from[2 * i], from[2 * i + 1]);
    } else if constexpr (std::is_same_v<T, int16_t>) {
        for (int i = 0; i < vectors; ++i) to.v[i] = narrowI16(from[2 * i], from[2 * i + 1]);
    } else {
        static_assert(std::is_same_v<T, float>);
        for (int i = 0; i < vectors; ++i) to.v[i] = narrowF32(from[2 * i], from[2 * i + 1]);
    }
    return to;
}

/// The low bits of an integer as a sample of type T: what a store without saturation leaves.
template <class T>
MOX_INLINE I32 lowBits(I32 v) {
    if constexpr (std::is_same_v<T, uint8_t>) return v & splat<I32>(0xFF);
    if constexpr (std::is_same_v<T, uint16_t>) return v & splat<I32>(0xFFFF);
    if constexpr (std::is_same_v<T, int16_t>) return shr<16>(shl<16>(v));
}

/// A rule or a kernel, or a part of one, made of the arguments that a call has behind the size: by its own of(), or as
/// an aggregate of them.
template <class Part, class... Extra>
MOX_INLINE Part partOf(Extra... extra) {
    if constexpr (requires {
                      { Part::of(extra...) } -> std::same_as<Part>;
                  })
        return Part::of(extra...);
    else
        return Part{extra...};
}

/// The columns of one vector of 32-bit lanes: lane l holds those from first + l * laneStride on.
template <int laneStride>
struct Columns {
    ptrdiff_t first;
};

/// A rule that works on vectors of type L, pixel by pixel: Px<L, channels> in, Px of results out. The results are
/// vectors that collect() takes to the destination's samples. A rule that depends on the column takes its Columns too.
template <class L, class Rule>
struct On {
    Rule rule;

    template <class... Extra>
    MOX_INLINE static On of(Extra... extra) {
        return {partOf<Rule>(extra...)};
    }

    template <int C, int N>
    static constexpr bool asksForColumns = std::is_invocable_v<const Rule&, const Px<L, C>&, Columns<N / lanes>>;

    template <class D, class S, int C, int N>
    MOX_INLINE auto apply(const Block<S, C, N>& in) const requires(!asksForColumns<C, N>) {
        return applied<D>(in, [&](const Px<L, C>& px, int) { return rule(px); });
    }
    template <class D, class S, int C, int N>
    MOX_INLINE auto apply(const Block<S, C, N>& in, ptrdiff_t x) const requires(asksForColumns<C, N>) {
        return applied<D>(
            in, [&](const Px<L, C>& px, int i) { return rule(px, Columns<N / lanes>{x + i * (L::count / lanes)}); });
    }

  private:
    template <class D, class S, int C, int N, class RuleOf>
    MOX_INLINE static auto applied(const Block<S, C, N>& in, const RuleOf& ruleOf) {
        constexpr int n = N / L::count;
        decltype(spread<L>(in.c[0])) wide[C];
        for (int c = 0; c < C; ++c) wide[c] = spread<L>(in.c[c]);

        using Out = decltype(ruleOf(Px<L, C>{}, 0));
        constexpr int outs = sizeof(Out::c) / sizeof(Out::c[0]);
        std::remove_cvref_t<decltype(Out::c[0])> results[outs][n];
        for (int i = 0; i < n; ++i) {
            Px<L, C> px;
            for (int c = 0; c < C; ++c) px.c[c] = wide[c].v[i];
            const Out out = ruleOf(px, i);
            for (int c = 0; c < outs; ++c) results[c][i] = out.c[c];
        }
        Block<D, outs, N> to;
        for (int c = 0; c < outs; ++c) to.c[c] = collect<D>(results[c]);
        return to;
    }
};

// Blocks are made vector by vector: the compiler moves whole channels through memory, in pieces of another size.

template <class T, int N>
MOX_INLINE Block<T, 4, N> withFourth(const Block<T, 3, N>& in, T value) {
    Block<T, 4, N> out;
    for (int j = 0; j < out.c[0].vectors; ++j) {
        for (int c = 0; c < 3; ++c) out.c[c].v[j] = in.c[c].v[j];
        out.c[3].v[j] = splat<Vec<T>>(value);
    }
    return out;
}

/// Channels 0 and 2 exchanged.
template <class T, int C, int N>
MOX_INLINE Block<T, C, N> reversed(const Block<T, C, N>& in) {
    Block<T, C, N> out;
    for (int c = 0; c < C; ++c)
        for (int j = 0; j < out.c[0].vectors; ++j) out.c[c].v[j] = in.c[c < 3 ? 2 - c : c].v[j];
    return out;
}

/// The rule that changes nothing.
struct Unchanged {
    template <class D, class In>
    MOX_INLINE In apply(const In& in) const {
        return in;
    }
};

/// A rule on the first three channels; the fourth is copied.
template <class Rule>
struct FourthCopied {
    Rule rule;

    template <class D, int N>
    MOX_INLINE Block<D, 4, N> apply(const Block<D, 4, N>& in) const {
        const Block<D, 3, N> out = rule.template apply<D>(Block<D, 3, N>{{in.c[0], in.c[1], in.c[2]}});
        return {{out.c[0], out.c[1], out.c[2], in.c[3]}};
    }
};

/// A rule of three results, and a fourth that is the same for all pixels.
template <class Rule, class T>
struct WithFourth {
    Rule rule;
    T value;

    MOX_INLINE static WithFourth of(T value) { return {{}, value}; }

    template <class D, class In>
    MOX_INLINE auto apply(const In& in) const {
        return withFourth(rule.template apply<D>(in), value);
    }
};

}  // namespace q4
