// Argument checks of entries that are functions, in the order in which they decide:
//
//     if (MoxStatus s = firstOf(notNull(src, dst), sizeAtLeast(roiSize, 2, 2))) return s;
//
// Each is tested only after those before it have passed.
#pragma once

#include "moxcc/types.h"

namespace q4 {

/// The status of the first check that fails, or moxStatusOk.
template <class... Check>
inline MoxStatus firstOf(const Check&... checks) {
    MoxStatus status = moxStatusOk;
    (void)(((status = checks()) != moxStatusOk) || ...);
    return status;
}

/// A check of any condition.
template <class Condition>
inline auto require(Condition condition, MoxStatus otherwise) {
    return [=] { return condition() ? MoxStatus(moxStatusOk) : otherwise; };
}

template <class... T>
inline auto notNull(const T*... pointers) {
    return [=] { return ((pointers != nullptr) && ...) ? moxStatusOk : moxStatusNullPtr; };
}

inline auto sizeAtLeast(MoxiSize size, int width, int height) {
    return [=] { return size.width >= width && size.height >= height ? moxStatusOk : moxStatusBadSize; };
}

}  // namespace q4
