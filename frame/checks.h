// Argument checks. An entry lists them in the order in which they decide:
//
//     if (MoxStatus s = firstOf(notNull(src, dstPlanes), sizeAtLeast(roiSize, 2, 2), planesNotNull<3>(dstPlanes)))
//     return s;
//
// Each is tested only after those before it have passed, so that a plane array is read only once it is known not to be
// null.
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

/// The first n pointers of a plane array.
template <int n, class T>
inline auto planesNotNull(T* const* planes) {
    return [=] {
        for (int i = 0; i < n; ++i)
            if (!planes[i]) return moxStatusNullPtr;
        return moxStatusOk;
    };
}

inline auto sizeAtLeast(MoxiSize size, int width, int height) {
    return [=] { return size.width >= width && size.height >= height ? moxStatusOk : moxStatusBadSize; };
}

/// Steps of at least 1.
template <class... Step>
inline auto stepsPositive(Step... steps) {
    return [=] { return ((steps >= 1) && ...) ? moxStatusOk : moxStatusBadStep; };
}

}  // namespace q4
