/* Converts four RGB pixels to gray and prints them. */
#include <stdio.h>

#include "moxcc/moxcc.h"

int main(void) {
    const Mox8u rgb[4 * 3] = {255, 0, 0, /**/ 0, 255, 0, /**/ 0, 0, 255, /**/ 255, 255, 255};
    Mox8u gray[4];
    const MoxiSize size = {4, 1};
    const MoxStatus status = moxiRGBToGray_8u_C3C1R(rgb, sizeof rgb, gray, sizeof gray, size);
    if (status != moxStatusOk) {
        fprintf(stderr, "%s\n", moxStatusText(status));
        return 1;
    }
    printf("red %d, green %d, blue %d, white %d\n", gray[0], gray[1], gray[2], gray[3]);
    return 0;
}
