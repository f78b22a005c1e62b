/* SPDX-License-Identifier: BSD-2-Clause */
/**
 * @file
 * moxCC: pixel conversions whose every output bit is defined. This header includes all others.
 */
#ifndef MOXCC_MOXCC_H
#define MOXCC_MOXCC_H

#include "moxcc/chroma_filter.h"
#include "moxcc/demosaic.h"
#include "moxcc/gamma.h"
#include "moxcc/gray.h"
#include "moxcc/hls.h"
#include "moxcc/hsv.h"
#include "moxcc/lab.h"
#include "moxcc/luv.h"
#include "moxcc/rec709_decode.h"
#include "moxcc/rec709_encode.h"
#include "moxcc/reduce_bits.h"
#include "moxcc/sampling.h"
#include "moxcc/tonemap.h"
#include "moxcc/twist.h"
#include "moxcc/types.h"
#include "moxcc/v210.h"
#include "moxcc/version.h"
#include "moxcc/xyz.h"
#include "moxcc/ycbcr.h"
#include "moxcc/ycbcr_decode.h"
#include "moxcc/ycbcr_encode.h"
#include "moxcc/ycc.h"
#include "moxcc/ycocg.h"
#include "moxcc/yuv.h"
#include "moxcc/yuv_decode.h"
#include "moxcc/yuv_encode.h"

#endif
