// YCoCg against plain code in 64 bits, with the width of each step named by the form.
#include "moxcc/ycocg.h"

#include "support/support.h"

using namespace moxtest;

namespace {

int64_t wrap16(int64_t v) { return static_cast<int16_t>(v); }
int64_t wrap32(int64_t v) { return static_cast<int32_t>(v); }
int64_t exact(int64_t v) { return v; }

template <class T>
int64_t saturate(int64_t v) {
    using L = std::numeric_limits<T>;
    return v < L::min() ? L::min() : v > L::max() ? L::max() : v;
}
template <class T>
int64_t keepLow(int64_t v) {
    return static_cast<T>(v);
}

using Step = int64_t (*)(int64_t);

/// The transforms: p holds R, G, B or Y, Co, Cg; each sum is reduced by step.
struct Triple {
    int64_t v[3];
};
using Transform = Triple (*)(Triple, Step step);

Triple forward(Triple p, Step step) {
    const auto [r, g, b] = p.v;
    return {{step(r + 2 * g + b + 2) >> 2, step(r - b + 1) >> 1, step(2 * g - r - b + 2) >> 2}};
}
Triple inverse(Triple p, Step step) {
    const auto [y, co, cg] = p.v;
    return {{step(y + co - cg), step(y + cg), step(y - co - cg)}};
}
Triple forwardRev(Triple p, Step step) {
    const auto [r, g, b] = p.v;
    const int64_t co = step(r - b), t = step(b + (co >> 1)), cg = step(g - t);
    return {{step(t + (cg >> 1)), co, cg}};
}
Triple inverseRev(Triple p, Step step) {
    const auto [y, co, cg] = p.v;
    const int64_t t = step(y - (cg >> 1)), g = step(cg + t), b = step(t - (co >> 1));
    return {{step(b + co), g, b}};
}
Triple forward8u(Triple p, Step step) {
    const Triple t = forward(p, step);
    return {{t.v[0], t.v[1] + 128, t.v[2] + 128}};
}
Triple inverse8u(Triple p, Step step) { return inverse({{p.v[0], p.v[1] - 128, p.v[2] - 128}}, step); }

enum Channels { rgb, bgr };  // of channel i: the transform's sample i, or 2 - i

struct Arithmetic {
    Transform transform;
    Step step, store;
};

template <class S, class D, class... Args>
void expectEncoding(int channels, Channels order, const Arithmetic& a,
                    Symbol<MoxStatus(const S*, int32_t, D* const*, int32_t, MoxiSize)> function) {
    forEachSize([&](MoxiSize roi, Random& random) {
        Plane<S> src(roi.width, roi.height, channels, random);
        const Layout layout = Layout::random(random, 1);
        const Plane<D> before(roi.width, roi.height, 1, layout, random);
        std::vector<Plane<D>> want(3, before);
        for (int y = 0; y < roi.height; ++y)
            for (int x = 0; x < roi.width; ++x) {
                Triple p;
                for (int c = 0; c < 3; ++c) p.v[order == rgb ? c : 2 - c] = src.get(x, y, c);
                p = a.transform(p, a.step);
                for (int c = 0; c < 3; ++c) want[size_t(c)].set(x, y, static_cast<D>(a.store(p.v[c])));
            }
        src.protect();
        forEachLibrary([&](const Library& lib) {
            std::vector<Plane<D>> got(3, before);
            D* planes[] = {got[0].data(), got[1].data(), got[2].data()};
            ASSERT_EQ(lib(function)(src.data(), src.step(), planes, got[0].step(), roi), moxStatusOk);
            for (size_t c = 0; c < 3; ++c) ASSERT_TRUE(same(got[c], want[c]));
        });
    });
}

template <class S, class D, class... Alpha>
void expectDecoding(Channels order, const Arithmetic& a,
                    Symbol<MoxStatus(const S* const*, int32_t, D*, int32_t, MoxiSize, Alpha...)> function) {
    constexpr int channels = 3 + sizeof...(Alpha);
    forEachSize([&](MoxiSize roi, Random& random) {
        const Layout layout = Layout::random(random, 1);
        std::vector<Plane<S>> src;
        src.reserve(3);
        for (int c = 0; c < 3; ++c) src.emplace_back(roi.width, roi.height, 1, layout, random);
        Plane<D> want(roi.width, roi.height, channels, random);
        const Plane<D> before = want;
        const D aval = random.sample<D>();
        for (int y = 0; y < roi.height; ++y)
            for (int x = 0; x < roi.width; ++x) {
                Triple p;
                for (int c = 0; c < 3; ++c) p.v[c] = src[size_t(c)].get(x, y);
                p = a.transform(p, a.step);
                for (int c = 0; c < 3; ++c) want.set(x, y, c, static_cast<D>(a.store(p.v[order == rgb ? c : 2 - c])));
                if (channels == 4) want.set(x, y, 3, aval);
            }
        for (Plane<S>& plane : src) plane.protect();
        forEachLibrary([&](const Library& lib) {
            Plane<D> got = before;
            const S* planes[] = {src[0].data(), src[1].data(), src[2].data()};
            ASSERT_EQ(lib(function)(planes, src[0].step(), got.data(), got.step(), roi, static_cast<Alpha>(aval)...),
                      moxStatusOk);
            ASSERT_TRUE(same(got, want));
        });
    });
}

TEST(YCoCg, Plain) {
    const Arithmetic to16 = {forward, exact, saturate<Mox16s>}, to32 = {forward, exact, exact};
    expectEncoding(3, bgr, to16, MOX_EXPORT(moxiBGRToYCoCg_8u16s_C3P3R));
    expectEncoding(4, bgr, to16, MOX_EXPORT(moxiBGRToYCoCg_8u16s_C4P3R));
    expectEncoding(3, bgr, to16, MOX_EXPORT(moxiSBGRToYCoCg_16s_C3P3R));
    expectEncoding(4, bgr, to16, MOX_EXPORT(moxiSBGRToYCoCg_16s_C4P3R));
    expectEncoding(3, bgr, to32, MOX_EXPORT(moxiSBGRToYCoCg_16s32s_C3P3R));
    expectEncoding(4, bgr, to32, MOX_EXPORT(moxiSBGRToYCoCg_16s32s_C4P3R));
    const Arithmetic from16 = {inverse, wrap16, keepLow<Mox16s>}, from32 = {inverse, wrap32, keepLow<Mox16s>};
    const Arithmetic toBytes = {inverse, wrap16, saturate<Mox8u>};
    expectDecoding(bgr, toBytes, MOX_EXPORT(moxiYCoCgToBGR_16s8u_P3C3R));
    expectDecoding(bgr, toBytes, MOX_EXPORT(moxiYCoCgToBGR_16s8u_P3C4R));
    expectDecoding(bgr, from16, MOX_EXPORT(moxiYCoCgToSBGR_16s_P3C3R));
    expectDecoding(bgr, from16, MOX_EXPORT(moxiYCoCgToSBGR_16s_P3C4R));
    expectDecoding(bgr, from32, MOX_EXPORT(moxiYCoCgToSBGR_32s16s_P3C3R));
    expectDecoding(bgr, from32, MOX_EXPORT(moxiYCoCgToSBGR_32s16s_P3C4R));
}

TEST(YCoCg, Reversible) {
    const Arithmetic to16 = {forwardRev, wrap16, keepLow<Mox16s>}, to32 = {forwardRev, exact, exact};
    expectEncoding(3, bgr, to16, MOX_EXPORT(moxiBGRToYCoCg_Rev_8u16s_C3P3R));
    expectEncoding(4, bgr, to16, MOX_EXPORT(moxiBGRToYCoCg_Rev_8u16s_C4P3R));
    expectEncoding(3, bgr, to16, MOX_EXPORT(moxiSBGRToYCoCg_Rev_16s_C3P3R));
    expectEncoding(4, bgr, to16, MOX_EXPORT(moxiSBGRToYCoCg_Rev_16s_C4P3R));
    expectEncoding(3, bgr, to32, MOX_EXPORT(moxiSBGRToYCoCg_Rev_16s32s_C3P3R));
    expectEncoding(4, bgr, to32, MOX_EXPORT(moxiSBGRToYCoCg_Rev_16s32s_C4P3R));
    const Arithmetic from16 = {inverseRev, wrap16, keepLow<Mox16s>}, from32 = {inverseRev, wrap32, keepLow<Mox16s>};
    const Arithmetic toBytes = {inverseRev, wrap16, saturate<Mox8u>};
    expectDecoding(bgr, toBytes, MOX_EXPORT(moxiYCoCgToBGR_Rev_16s8u_P3C3R));
    expectDecoding(bgr, toBytes, MOX_EXPORT(moxiYCoCgToBGR_Rev_16s8u_P3C4R));
    expectDecoding(bgr, from16, MOX_EXPORT(moxiYCoCgToSBGR_Rev_16s_P3C3R));
    expectDecoding(bgr, from16, MOX_EXPORT(moxiYCoCgToSBGR_Rev_16s_P3C4R));
    expectDecoding(bgr, from32, MOX_EXPORT(moxiYCoCgToSBGR_Rev_32s16s_P3C3R));
    expectDecoding(bgr, from32, MOX_EXPORT(moxiYCoCgToSBGR_Rev_32s16s_P3C4R));
}

TEST(YCoCg, EightBit) {
    expectEncoding(3, rgb, {forward8u, exact, saturate<Mox8u>}, MOX_EXPORT(moxiRGBToYCoCg_8u_C3P3R));
    expectDecoding(rgb, {inverse8u, exact, saturate<Mox8u>}, MOX_EXPORT(moxiYCoCgToRGB_8u_P3C3R));
}

}  // namespace
