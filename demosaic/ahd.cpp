// Adaptive homogeneity-directed reconstruction of Bayer images.
//
// Every pixel is reconstructed twice, as if the image ran horizontally there and as if it ran vertically. The direction
// whose result is alike to more of its neighbours, in luma and in chroma, wins; the neighbourhood votes.
#include "demosaic/bayer.h"

namespace q4 {
namespace {

// ---- rules ----------------------------------------------------------------------------------------------------------

/// How far green falls short of the site's own colour along a line: site, the green neighbours a and b, and the next
/// sites of its colour beyond them. Green is the neighbours' mean plus a quarter of the own colour's second difference,
/// within the neighbours' range.
template <class V>
MOX_INLINE V colourLessGreen(V site, V a, V b, V before, V behind) {
    const V mean = shr<1>(a + b) + shr<2>(site - before - (behind - site));
    return site - min(max(mean, min(a, b)), max(a, b));
}

/// BT.601 luma and chroma in units of 1/256 without offsets, for a row of which `own` is the row's colour, red or blue.
struct Weights {
    int16_t own, green, opposite;
};
constexpr Weights lumaWeights[2] = {{25, 129, 66}, {66, 129, 25}};  // of rows of blue, of red
constexpr Weights chromaUWeights[2] = {{112, -74, -38}, {-38, -74, 112}};
constexpr Weights chromaVWeights[2] = {{-18, -94, 112}, {112, -94, -18}};

template <class V>
MOX_INLINE V weighted(const Weights& w, V own, V green, V opposite) {
    return own * splat<V>(w.own) + green * splat<V>(w.green) + opposite * splat<V>(w.opposite) + splat<V>(128);
}
/// Sums of luma weights may take all bits of a lane.
MOX_INLINE I16 luma(I16 sum) { return as<I16>(shr<8>(as<U16>(sum))); }
MOX_INLINE I32 luma(I32 sum) { return shr<8>(sum); }

template <class V>
struct Yuv {
    V y, u, v;
};

/// Squared distance in chroma. On 16-bit lanes, of 8-bit samples, it is below 65536 for any two colours and is kept
/// less 32768, to compare as a signed number; on 32-bit lanes it is what 32 bits hold of it.
template <class V>
MOX_INLINE V chromaDistance(const Yuv<V>& a, const Yuv<V>& b) {
    const V du = a.u - b.u, dv = a.v - b.v, sum = du * du + dv * dv;
    if constexpr (std::is_same_v<V, I16>)
        return sum ^ splat<I16>(INT16_MIN);
    else
        return sum;
}

/// Distances between two neighbours.
template <class V>
struct Distance {
    V luma, chroma;
    Distance() = default;
    MOX_INLINE Distance(const Yuv<V>& a, const Yuv<V>& b) : luma(as<V>(abs(a.y - b.y))), chroma(chromaDistance(a, b)) {}
};

/// Of one direction's reconstruction, from a pixel to its four neighbours.
template <class V>
struct Distances {
    Distance<V> left, right, up, down;
};

/// The number of neighbours alike in the horizontal reconstruction less that in the vertical one. What is alike is
/// decided by the neighbours along each direction's own line: by the better line's worse neighbour.
template <class V>
MOX_INLINE V homogeneity(const Distances<V>& h, const Distances<V>& v) {
    const V lumaLimit = min(max(h.left.luma, h.right.luma), max(v.up.luma, v.down.luma));
    const V chromaLimit = min(max(h.left.chroma, h.right.chroma), max(v.up.chroma, v.down.chroma));
    const auto lessUnlike = [&](const Distances<V>& d) {  // masks are -1
        const auto unlike = [&](const Distance<V>& n) { return gt(n.luma, lumaLimit) | gt(n.chroma, chromaLimit); };
        return unlike(d.left) + unlike(d.right) + unlike(d.up) + unlike(d.down);
    };
    return lessUnlike(h) - lessUnlike(v);
}

// ---- strips ---------------------------------------------------------------------------------------------------------

/// Along a row an undecided pixel follows the last decided one to its left. It does so within strips only: an interior
/// of even size that starts at a red site, five pixels or more from the image's edges, with strips above and below it
/// over the region's full width, and one on its left and right. As all else is the same in all of them, they come down
/// to the columns at which a row starts undecided, which is decided as horizontal.
struct StripPlan {
    ptrdiff_t x, xEnd, y, yEnd;  // the region
    ptrdiff_t interiorX, interiorXEnd, interiorY, interiorYEnd;

    StripPlan(ptrdiff_t x_, ptrdiff_t width, ptrdiff_t y_, ptrdiff_t height, MoxiSize image, BayerSites sites)
        : x(x_), xEnd(x_ + width), y(y_), yEnd(y_ + height) {
        const auto span = [](ptrdiff_t first, ptrdiff_t end, ptrdiff_t imageEnd, int red, ptrdiff_t& from,
                             ptrdiff_t& to) {
            from = std::max<ptrdiff_t>(first, 5);
            ptrdiff_t count = std::max<ptrdiff_t>(std::min(imageEnd - 5, end) - from, 0);
            if ((from & 1) != red) ++from, --count;
            to = from + (count & -2);  // of nothing at all this makes -2, and strips that overlap
        };
        span(x, xEnd, image.width, sites.redX, interiorX, interiorXEnd);
        span(y, yEnd, image.height, sites.redY, interiorY, interiorYEnd);
    }

    bool besideInterior(ptrdiff_t row) const { return row >= interiorY && row < interiorYEnd; }

    /// The first column that any row needs: a right strip may start left of the region.
    ptrdiff_t xFirst() const { return interiorY < interiorYEnd ? std::min(x, interiorXEnd) : x; }

    struct Starts {
        ptrdiff_t column[3];
    };
    /// The first columns of the strips of a row. Of strips that overlap the later one stands.
    Starts starts(ptrdiff_t row) const {
        if (!besideInterior(row)) return {{x, x, x}};
        return {{std::min(x, interiorXEnd), std::min(interiorX, interiorXEnd), interiorXEnd}};
    }
};

// ---- tiles ----------------------------------------------------------------------------------------------------------

/// What a tile holds of its last few rows. Index `margin` is the tile's first column; the rows of the first stages are
/// made some columns further to both sides than those of the later ones, which need them.
template <class T>
class AhdTile {
    using V = Wide<T>;
    static constexpr int N = pixelsPerVector<T>;
    static constexpr int margin = 6;  // even, as all first columns of stages, so that sites keep their phase
    static constexpr int blocks = 12;
    static constexpr int rowColumns = N * (blocks + 2);

    enum Direction { horizontal, vertical };
    struct Differences {  // colour less green, at red and blue sites
        HalfRow<T, rowColumns> direction[2];
    };
    struct RgbRow {
        alignas(vectorBytes) T channel[2][3][rowColumns];
    };
    struct YuvRow {
        SplitRow<T, rowColumns> y[2], u[2], v[2];
        MOX_INLINE Yuv<V> at(int d, int parity, ptrdiff_t i, int dx) const {
            return {y[d].at(parity, i, dx), u[d].at(parity, i, dx), v[d].at(parity, i, dx)};
        }
    };
    struct Bytes {
        alignas(vectorBytes) int8_t at[rowColumns + vectorBytes];
    };

    RowRing<SplitRow<T, rowColumns>, 8> source;
    RowRing<Differences, 4> difference;
    RowRing<RgbRow, 4> rgb;
    RowRing<YuvRow, 4> yuv;
    RowRing<Bytes, 4> vote;  // for horizontal
    Bytes choice = {};
    alignas(vectorBytes) T latest[rowColumns] = {};

  public:
    static constexpr int columns = N * blocks - 8;  // so that no stage needs more than its blocks
    static constexpr int bandRows = 128;

    /// Whether the choice at the right end of each row of a band is vertical, from tile to tile.
    struct Carry {
        bool row[bandRows] = {};
    };

    AhdTile(const MirroredImage<T>& i, BayerSites s, const StripPlan& p, const Image<uint8_t, 1>& d)
        : image(i), sites(s), plan(p), dst(d) {}

    /// Columns x to x + width - 1 of rows y0 to y1 - 1.
    void run(ptrdiff_t x, ptrdiff_t width, ptrdiff_t y0, ptrdiff_t y1, Carry& carry) {
        x0 = x;
        end = margin + width;
        for (ptrdiff_t newest = y0 - 5; newest < y1 + 5; ++newest) {
            image.copy(x0 - margin, newest, end + 5, latest);
            source[newest].split(latest, end + 5);
            if (newest - 2 >= y0 - 3) byParity(newest - 2, [&](auto parity) { greens<parity>(newest - 2); });
            if (newest - 3 >= y0 - 2) byParity(newest - 3, [&](auto parity) { colours<parity>(newest - 3); });
            if (newest - 4 >= y0 - 1) votes(newest - 4);
            if (newest - 5 >= y0) {
                choose(newest - 5, carry.row[newest - 5 - y0]);
                write(newest - 5);
            }
        }
    }

  private:
    const MirroredImage<T>& image;
    const BayerSites sites;
    const StripPlan& plan;
    const Image<uint8_t, 1>& dst;
    ptrdiff_t x0 = 0, end = 0;  // the tile's first column in the image, and its end in the rows

    template <class Stage>
    MOX_INLINE void byParity(ptrdiff_t y, const Stage& stage) const {
        if ((sites.colourColumns(y) ^ x0) & 1)
            stage(std::integral_constant<int, 1>());
        else
            stage(std::integral_constant<int, 0>());
    }

    /// parity: of the columns of red or blue.
    template <int parity>
    void greens(ptrdiff_t y) {
        for (ptrdiff_t i = (margin - 4) / 2; 2 * i < end + 3; i += N / 2) {
            const auto p = [&](int dx, int dy) { return source[y + dy].at(parity, i, dx); };
            const V site = p(0, 0);
            difference[y].direction[horizontal].set(i, colourLessGreen(site, p(-1, 0), p(1, 0), p(-2, 0), p(2, 0)));
            difference[y].direction[vertical].set(i, colourLessGreen(site, p(0, -1), p(0, 1), p(0, -2), p(0, 2)));
        }
    }

    /// Colours that a site lacks are its green plus the mean difference around it.
    template <int parity>
    void colours(ptrdiff_t y) {
        constexpr int other = 1 - parity;
        const bool red = sites.redRow(y);
        for (ptrdiff_t i = (margin - 2) / 2; 2 * i < end + 2; i += N / 2) {
            for (const int d : {horizontal, vertical}) {
                const auto diff = [&](int site, int dx, int dy) {
                    return difference[y + dy].direction[d].at(site, i, dx);
                };
                V own[2], green[2], opposite[2];  // by parity; at green sites the row's and the column's colour
                own[parity] = source[y].at(parity, i, 0);
                green[parity] = own[parity] - diff(parity, 0, 0);
                opposite[parity] = clipped<T>(green[parity] + shr<2>(diff(parity, -1, -1) + diff(parity, 1, -1) +
                                                                     diff(parity, -1, 1) + diff(parity, 1, 1)));
                green[other] = source[y].at(other, i, 0);
                own[other] = clipped<T>(green[other] + shr<1>(diff(other, -1, 0) + diff(other, 1, 0)));
                opposite[other] = clipped<T>(green[other] + shr<1>(diff(other, 0, -1) + diff(other, 0, 1)));

                auto& channel = rgb[y].channel[d];
                store(channel[red ? 0 : 2] + 2 * i, joined<T>(own[0], own[1]));
                store(channel[1] + 2 * i, joined<T>(green[0], green[1]));
                store(channel[red ? 2 : 0] + 2 * i, joined<T>(opposite[0], opposite[1]));
                for (int k = 0; k < 2; ++k) {
                    const auto sum = [&](const Weights& w) { return weighted(w, own[k], green[k], opposite[k]); };
                    yuv[y].y[d].half[k].set(i, luma(sum(lumaWeights[red])));
                    yuv[y].u[d].half[k].set(i, shr<8>(sum(chromaUWeights[red])));
                    yuv[y].v[d].half[k].set(i, shr<8>(sum(chromaVWeights[red])));
                }
            }
        }
    }

    void votes(ptrdiff_t y) {
        for (ptrdiff_t i = (margin - 2) / 2; 2 * i < end + 1; i += N / 2) {
            Distances<V> even[2], odd[2];
            for (const int d : {horizontal, vertical}) {
                const auto p = [&](int dx, int dy) { return yuv[y + dy].at(d, 0, i, dx); };
                const Distance<V> between(p(0, 0), p(1, 0));
                even[d] = {{p(-1, 0), p(0, 0)}, between, {p(0, 0), p(0, -1)}, {p(0, 0), p(0, 1)}};
                odd[d] = {between, {p(1, 0), p(2, 0)}, {p(1, 0), p(1, -1)}, {p(1, 0), p(1, 1)}};
            }
            storeVotes(vote[y].at + 2 * i, homogeneity(even[horizontal], even[vertical]),
                       homogeneity(odd[horizontal], odd[vertical]));
        }
    }
    MOX_INLINE static void storeVotes(int8_t* to, I16 even, I16 odd) {
        store(to, joined<uint8_t>(even & splat<I16>(0xFF), odd));
    }
    MOX_INLINE static void storeVotes(int8_t* to, I32 even, I32 odd) {
        const I16 all = as<I16>(joined<uint16_t>(even & splat<I32>(0xFFFF), odd));
        storeHalf(to, narrowI8(all, all));
    }

    /// Makes masks of the pixels that take the vertical reconstruction.
    void choose(ptrdiff_t y, bool& carry) {
        for (ptrdiff_t x = margin; x < end; x += vectorBytes) {
            U8 sum = zero<U8>();
            for (int dy = -1; dy <= 1; ++dy)
                for (int dx = -1; dx <= 1; ++dx) sum = sum + load<U8>(vote[y + dy].at + x + dx);
            store(choice.at + x, sum);
        }
        for (const ptrdiff_t start : plan.starts(y).column) {
            const ptrdiff_t x = margin + start - x0;
            if (x >= margin && x < end && choice.at[x] == 0) choice.at[x] = 1;
        }
        bool verticalBefore = carry;
        for (ptrdiff_t x = margin; x < end; x += vectorBytes) {
            const U8 sum = load<U8>(choice.at + x);
            const ByteBits undecided = topBits(eq(sum, zero<U8>())), negative = topBits(sum);
            // Adding a run's first bit clears the run, if a vertical choice stands before it.
            const ByteBits runs = (negative << 1 | ByteBits(verticalBefore)) & undecided;
            const ByteBits chosen = negative | (undecided & ~(undecided + runs));
            verticalBefore = chosen >> (vectorBytes - 1) & 1;
            store(choice.at + x, byteMask(chosen));
        }
        carry = choice.at[end - 1] != 0;
    }

    void write(ptrdiff_t y) const {
        const DstRows<1> to = dst.row(y - plan.y);
        for (ptrdiff_t x = margin + std::max<ptrdiff_t>(plan.x - x0, 0); x < end; x += N) {
            const Vec<T> mask = loadMask(choice.at + x);
            Block<T, 3, N> block;
            for (int c = 0; c < 3; ++c)
                block.c[c].v[0] = select(mask, load<Vec<T>>(rgb[y].channel[vertical][c] + x),
                                         load<Vec<T>>(rgb[y].channel[horizontal][c] + x));
            storeFirst<C3<T>, N>(to, x - margin + x0 - plan.x, end - x, block);
        }
    }
    MOX_INLINE static Vec<T> loadMask(const int8_t* from) {
        if constexpr (sizeof(T) == 1) {
            return load<U8>(from);
        } else {
            const U16 bytes = loadHalf<U16>(from);
            return unpackLo<8>(bytes, bytes);
        }
    }
};

template <class T>
void ownAHD(const MirroredImage<T>& image, BayerSites sites, const StripPlan& plan, const Image<uint8_t, 1>& dst) {
    using Tile = AhdTile<T>;
    Tile tile(image, sites, plan, dst);
    for (ptrdiff_t y = plan.y; y < plan.yEnd; y += Tile::bandRows) {
        typename Tile::Carry carry;
        for (ptrdiff_t x = plan.xFirst(); x < plan.xEnd; x += Tile::columns)
            tile.run(x, std::min<ptrdiff_t>(Tile::columns, plan.xEnd - x), y,
                     std::min<ptrdiff_t>(y + Tile::bandRows, plan.yEnd), carry);
    }
}

// ---- entries --------------------------------------------------------------------------------------------------------

// The caller's scratch stays unused: tiles and their few rows on the stack are faster, as they stay in the first cache.
template <class T>
MoxStatus demosaicAHD(const T* src, MoxiRect srcRoi, MoxiSize srcSize, int32_t srcStep, T* dst, int32_t dstStep,
                      MoxBayerGrid grid, Mox8u*, int32_t) {
    if (MoxStatus s = firstOf(notNull(src, dst), sizeAtLeast(srcSize, 5, 5), gridKnown(grid))) return s;

    // A negative origin counts as 0 and does not shorten the region.
    const ptrdiff_t x = std::max(srcRoi.x, 0), y = std::max(srcRoi.y, 0);
    const ptrdiff_t width = std::min<ptrdiff_t>(srcRoi.width, srcSize.width - x);
    const ptrdiff_t height = std::min<ptrdiff_t>(srcRoi.height, srcSize.height - y);
    if (width < 1 || height < 1) return moxStatusOk;

    const BayerSites sites(grid);
    ownAHD(MirroredImage<T>(src, srcStep, srcSize), sites, StripPlan(x, width, y, height, srcSize, sites),
           image(dst, dstStep));
    return moxStatusOk;
}

}  // namespace

template <>
constexpr auto entry<moxiDemosaicAHD_8u_C1C3R> = demosaicAHD<Mox8u>;
template <>
constexpr auto entry<moxiDemosaicAHD_16u_C1C3R> = demosaicAHD<Mox16u>;

}  // namespace q4

#include "ahd.inc"
