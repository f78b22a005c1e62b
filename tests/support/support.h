// What the tests share. How a test is written:
//
//     #include "moxcc/gray.h"
//     #include "support/support.h"
//
//     using namespace moxtest;
//
//     TEST(Gray, MatchesItsRule) {
//         forEachSize([](MoxiSize roi, Random& random) {
//             Plane<Mox8u> src(roi.width, roi.height, 3, random);   // columns, rows, channels: random layout and
//             samples Plane<Mox8u> want(roi.width, roi.height, 1, random); const Plane<Mox8u> before = want; // a copy:
//             same address modulo 4096, step and bytes referenceGray(src, want);                              // plain
//             code: src.get(x, y, c), want.set(x, y, v) src.protect();                                         // a
//             write to the source is now a fault forEachLibrary([&](const Library& lib) {
//                 Plane<Mox8u> got = before;
//                 ASSERT_EQ(MOX_CALL(lib, moxiRGBToGray_8u_C3C1R)(src.data(), src.step(), got.data(), got.step(), roi),
//                           moxStatusOk);
//                 ASSERT_TRUE(same(got, want));                      // every byte, margins too
//             });
//         });
//     }
//
// library.h    The library files, loaded side by side by path. MOX_CALL(lib, moxiX)(...) calls one export with the
//              types of its prototype. A table of forms holds MOX_EXPORT(moxiX), and lib(form.function)(...) calls it.
//              Each call is noted: messages, and the note on a crash, name the export, the file and the size. Each
//              call is also checked to leave the rounding mode and the other floating-point controls as they were.
// plane.h      Plane<T>: pixels before or after a guard page, with margins, any alignment, steps of both signs; same().
// random.h     Random: seeded integers, floats, special floats.
// float_env.h  Rounding modes, flush-to-zero and the x87 control word for the length of a scope or a call.
// sizes.h      forEachSize(): the sizes around every block limit.
//
// Loops over libraries and sizes end at the first failure. The environment variable MOXCC_TEST_LIBRARY, a file's name
// (SSE4.2, static), restricts a run to it: ctest has one entry per test program and shared file. The static library is
// held to the contract, which compares it with them.
#ifndef SUPPORT_SUPPORT_H
#define SUPPORT_SUPPORT_H

#include <gtest/gtest.h>

#include "support/float_env.h"
#include "support/library.h"
#include "support/plane.h"
#include "support/random.h"
#include "support/sizes.h"

#endif
