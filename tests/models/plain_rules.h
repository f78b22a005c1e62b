// The fixed-point colour rules as plain integer arithmetic, each by its own formula.
#ifndef MODELS_PLAIN_RULES_H
#define MODELS_PLAIN_RULES_H

#include <algorithm>

namespace plain {

/// Three channels in, three out.
using Rule = void (*)(const int in[3], int out[3]);

inline int clamp(int v) { return std::clamp(v, 0, 255); }
inline int t(int p, int c) { return (p * c) >> 9; }
inline int m(int x, int c) { return (128 * x * c + 16384) >> 15; }
inline int a(int x, int c) { return (x * c) >> 8; }

#define PLAIN_FORWARD(tag, first, second, third)                    \
    inline void tag(const int in[3], int out[3]) {                  \
        [[maybe_unused]] const int R = in[0], G = in[1], B = in[2]; \
        out[0] = first, out[1] = second, out[2] = third;            \
    }
PLAIN_FORWARD(YF1, (16843 * R + 33030 * G + 6423 * B + 0x108000) >> 16,
              (-9699 * R - 19071 * G + 28770 * B + 0x808000) >> 16, (28770 * R - 24117 * G - 4653 * B + 0x808000) >> 16)
PLAIN_FORWARD(YF2, clamp((m(R, 4211) + m(G, 8258) + m(B, 1606) + 1056) >> 6),
              clamp((m(B, 7193) - m(R, 2425) - m(G, 4768) + 8194) >> 6),
              clamp((m(R, 7193) - m(G, 6029) - m(B, 1163) + 8194) >> 6))
PLAIN_FORWARD(YF3, clamp(((a(R, 16843) + a(G, 33030) + a(B, 6423) + 128) >> 8) + 16),
              clamp(((t(R, -9699) + t(G, -19071) + t(B, 28770) + 64) >> 7) + 128),
              clamp(((t(R, 28770) + t(G, -24117) + t(B, -4653) + 64) >> 7) + 128))

inline void differences(const int in[3], int out[3], int luma, int half) {
    const int R = in[0], G = in[1], B = in[2], raw = 19595 * R + 38470 * G + 7471 * B;
    const int d = ((B << 16) - raw + half) >> 16, e = ((R << 16) - raw + half) >> 16;
    out[0] = (raw + luma) >> 16;
    out[1] = ((d * 32244) >> 16) + 128;
    out[2] = clamp(((e * 57475) >> 16) + 128);
}
inline void UF1(const int in[3], int out[3]) { differences(in, out, 0x8000, 0x8000); }
inline void UF2(const int in[3], int out[3]) { differences(in, out, 0, 0x7FFF); }
PLAIN_FORWARD(UF3, (a(R, 19595) + a(G, 38469) + a(B, 7471)) >> 8,
              clamp(((t(R, -4816) + t(G, -9469) + t(B, 14286)) >> 6) + 128),
              clamp(((t(R, 20152) + t(G, -16875) + t(B, -3276)) >> 6) + 128))
PLAIN_FORWARD(UF4, (19595 * R + 38469 * G + 7471 * B) >> 16, ((-4816 * R - 9469 * G + 14286 * B) >> 15) + 128,
              clamp(((20152 * R - 16875 * G - 3276 * B) >> 15) + 128))
inline int twiceLuma(int R, int G, int B) {
    return ((4 * R * 9798) >> 16) + ((4 * G * 19235) >> 16) + ((4 * B * 3736) >> 16) + 1;
}
PLAIN_FORWARD(UF5, clamp(twiceLuma(R, G, B) >> 1), clamp((((2 * B - twiceLuma(R, G, B)) * 16121) >> 16) + 128),
              clamp((((2 * R - twiceLuma(R, G, B)) * 28737) >> 16) + 128))
#undef PLAIN_FORWARD

/// Y, y = Y - 16; chroma U, V and u, v, less 128.
#define PLAIN_INVERSE(tag, r, g, b)                                                                       \
    inline void tag(const int in[3], int out[3]) {                                                        \
        [[maybe_unused]] const int Y = in[0], U = in[1], V = in[2], y = Y - 16, u = U - 128, v = V - 128; \
        out[0] = clamp(r), out[1] = clamp(g), out[2] = clamp(b);                                          \
    }
PLAIN_INVERSE(YI1, (76282 * y + 104593 * v + 32768) >> 16, (76282 * y - 25689 * u - 53279 * v + 32768) >> 16,
              (76282 * y + 132184 * u + 32768) >> 16)
PLAIN_INVERSE(YI2, (76284 * y + 104595 * v + 32768) >> 16, (76284 * y - 25690 * u - 53281 * v + 32768) >> 16,
              (76284 * y + 132186 * u + 32768) >> 16)
PLAIN_INVERSE(YI3, (76284 * y + 104595 * v) >> 16, (76284 * y - 25690 * u - 53281 * v) >> 16,
              (76284 * y + 132186 * u) >> 16)
PLAIN_INVERSE(YI4, (t(y, 4769) + t(v, 6537) + 4) >> 3, (t(y, 4769) - t(u, 1605) - t(v, 3330) + 4) >> 3,
              (t(y, 4769) + t(u, 8263) + 4) >> 3)
PLAIN_INVERSE(YI5, (t(y, 9535) + t(v, 13074) + 8) >> 4, (t(y, 9535) - t(v, 6660) - t(u, 3211) + 8) >> 4,
              (t(y, 9535) + t(u, 16523) + 8) >> 4)
PLAIN_INVERSE(YI6, (t(y, 9536) + t(v, 13074)) >> 4, (t(y, 9536) + t(v, -6660) + t(u, -3203)) >> 4,
              (t(y, 9536) + t(u, 16523)) >> 4)
PLAIN_INVERSE(YI7, (t(Y, 4768) + t(V, 6537) - 1783) >> 3, (t(Y, 4768) - t(U, 1606) - t(V, 3330) + 1085) >> 3,
              (t(Y, 4768) + t(U, 8262) - 2214) >> 3)
PLAIN_INVERSE(YI8, (t(y, 4767) + t(v, 6537)) >> 3, (t(y, 4767) - t(u, 1605) - t(v, 3330)) >> 3,
              (t(y, 4767) + t(u, 8261)) >> 3)
PLAIN_INVERSE(YI9, (76284 * Y + 104595 * V - 14608761) >> 16, (76284 * Y - 25690 * U - 53281 * V + 8887730) >> 16,
              (76284 * Y + 132186 * U - 18140365) >> 16)
PLAIN_INVERSE(YI10, (t(y, 9535) + t(v, 13074) + 8) >> 4, (t(y, 9535) + t(v, -6660) + t(u, -3211) + 8) >> 4,
              (t(y, 9535) + t(u, 16523) + 8) >> 4)
PLAIN_INVERSE(YI11, (t(Y, 4769) + t(V, 6537) - 1779) >> 3, (t(Y, 4769) - t(U, 1605) - t(V, 3330) + 1089) >> 3,
              (t(Y, 4769) + t(U, 8263) - 2211) >> 3)
PLAIN_INVERSE(YI12, (t(Y, 4768) + t(V, 6537) - 1779) >> 3, (t(Y, 4768) - t(U, 1606) - t(V, 3330) + 1084) >> 3,
              (t(Y, 4768) + t(U, 8262) - 2210) >> 3)
PLAIN_INVERSE(YI13, (76294 * y + 104595 * v + 32768) >> 16, (76294 * y - 25625 * u - 53281 * v + 32768) >> 16,
              (76294 * y + 132186 * u + 32768) >> 16)

PLAIN_INVERSE(UI1, ((Y << 16) + 74711 * v + 0x8000) >> 16, ((Y << 16) - 25821 * u - 38076 * v) >> 16,
              ((Y << 16) + 133169 * u + 0x8000) >> 16)
PLAIN_INVERSE(UI2, ((Y << 16) + 74711 * v + 0x8000) >> 16, ((Y << 16) - 25821 * u - 38076 * v + 0x8000) >> 16,
              ((Y << 16) + 133169 * u + 0x8000) >> 16)
PLAIN_INVERSE(UI3, ((Y << 16) + 74710 * v) >> 16, ((Y << 16) - 25820 * u - 38075 * v) >> 16,
              ((Y << 16) + 133168 * u) >> 16)
PLAIN_INVERSE(UI4, Y + ((v * 9339) >> 13), Y + ((u * -3228) >> 13) + ((v * -4760) >> 13), Y + ((u * 16646) >> 13))
PLAIN_INVERSE(UI5, (2 * Y + ((v * 9338) >> 12)) >> 1, (2 * Y + ((u * -3227) >> 12) + ((v * -4759) >> 12)) >> 1,
              (2 * Y + ((u * 16645) >> 12)) >> 1)
PLAIN_INVERSE(UI6, (8 * Y + t(v, 4669) + 4) >> 3, (8 * Y - t(v, 2380) - t(u, 1614) + 4) >> 3,
              (8 * Y + t(u, 8323) + 4) >> 3)
PLAIN_INVERSE(UI7, ((Y << 16) + 74711 * v) >> 16, ((Y << 16) - 25821 * u - 38076 * v) >> 16,
              ((Y << 16) + 133169 * u) >> 16)
PLAIN_INVERSE(UI8, ((Y << 4) + ((v * 128 * 9338) >> 16) + 8) >> 4,
              ((Y << 4) - ((u * 128 * 3227) >> 16) - ((v * 128 * 4759) >> 16) + 8) >> 4,
              ((Y << 4) + ((u * 128 * 16646) >> 16) + 8) >> 4)
PLAIN_INVERSE(UI9, (2 * Y + ((v * 9339) >> 12)) >> 1, (2 * Y + ((u * -3228) >> 12) + ((v * -4760) >> 12)) >> 1,
              (2 * Y + ((u * 16646) >> 12)) >> 1)
PLAIN_INVERSE(UI10, ((Y << 13) + 9338 * v) >> 13, ((Y << 13) - 3227 * u - 4759 * v) >> 13,
              ((Y << 13) + 16645 * u) >> 13)

PLAIN_INVERSE(VI1, (t(y, 9535) + t(v, 14688) + 8) >> 4, (t(y, 9535) + t(u, -1745) + t(v, -4375) + 8) >> 4,
              (t(y, 9535) + t(u, 17326) + 8) >> 4)
PLAIN_INVERSE(VI2, (t(y, 9535) + t(v, 14688) + 8) >> 4, (t(y, 9535) - t(u, 1745) - t(v, 4375) + 8) >> 4,
              (t(y, 9535) + t(u, 17326) + 8) >> 4)
PLAIN_INVERSE(VI3, (76284 * y + 117506 * v + 32768) >> 16, (76284 * y - 13959 * u - 34996 * v + 32768) >> 16,
              (76284 * y + 138609 * u + 32768) >> 16)
PLAIN_INVERSE(HI1, ((Y << 4) + t(v, 12616) + 8) >> 4, ((Y << 4) + t(u, -1499) + t(v, -3760) + 8) >> 4,
              ((Y << 4) + t(u, 14877) + 8) >> 4)
PLAIN_INVERSE(HI2, ((Y << 4) + t(v, 12616) + 8) >> 4, ((Y << 4) - t(u, 1499) - t(v, 3760) + 8) >> 4,
              ((Y << 4) + t(u, 14877) + 8) >> 4)
PLAIN_INVERSE(HI3, ((Y << 16) + 100925 * v + 32768) >> 16, ((Y << 16) - 11993 * u - 30081 * v + 32768) >> 16,
              ((Y << 16) + 119013 * u + 32768) >> 16)
#undef PLAIN_INVERSE

}  // namespace plain

#endif
