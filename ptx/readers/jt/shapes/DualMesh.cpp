#include "ptx/readers/jt/shapes/DualMesh.h"

#include <algorithm>
#include <bit>

namespace ptx::jt::shapes
{

namespace
{

constexpr int None = -1;
constexpr std::size_t MostCandidates = 16;

struct Poly {
    std::size_t first = 0; ///< of its corners
    int corners = 0;
    std::int32_t group = 0;
    bool isCover = false;
};

struct Point {
    std::size_t first = 0; ///< of its slots
    int degree = 0;
    int free = 0;
    std::uint32_t firstRecord = 0;
    std::uint32_t records = 0;
    std::size_t mask = 0; ///< first word of its bits
    bool isDone = false;
};

class Rebuild
{
public:
    explicit Rebuild(const Topology& topology) : m_in(topology)
    {
        m_room = 4 * topology.valences.size() + 64;
        for (const std::int32_t valence : topology.valences)
            m_room += valence > 0 ? static_cast<std::size_t>(valence) : 0;
        for (const codec::Values& degrees : topology.degrees)
            m_room += 4 * degrees.size();
        // Every search of a ring is short in real meshes; damaged ones must not make it quadratic.
        m_steps = 4096 * m_room;
    }

    Connectivity run()
    {
        for (int p = newPoly(); p != None && isOk(); p = newPoly())
            component(p);
        Connectivity result;
        if (isOk() && !isUsedUp())
            fail("arrays of the mesh are left over");
        if (isOk())
            collect(result);
        result.positions = m_points.size();
        result.error = m_error;
        if (m_error)
            result.triangles.clear();
        return result;
    }

private:
    bool isOk() const { return !m_error; }
    void fail(const char* what) { m_error = m_error ? m_error : what; }

    int& corner(int p, int i)
    {
        const Poly& poly = m_polys[static_cast<std::size_t>(p)];
        return m_corners[poly.first + static_cast<std::size_t>((i + poly.corners) % poly.corners)];
    }

    int& slot(int f, int k)
    {
        const Point& point = m_points[static_cast<std::size_t>(f)];
        return m_slots[point.first + static_cast<std::size_t>((k + point.degree) % point.degree)];
    }

    int find(const std::vector<int>& ring, std::size_t first, int size, int value)
    {
        const auto begin = ring.begin() + static_cast<std::ptrdiff_t>(first);
        const auto at = std::find(begin, begin + size, value);
        const auto taken = static_cast<std::size_t>(at - begin) + 1;
        if (taken > m_steps)
            fail("the rings of the mesh are too long");
        m_steps -= std::min(m_steps, taken);
        return at == begin + size ? None : static_cast<int>(at - begin);
    }

    int cornerOf(int p, int f)
    {
        const Poly& poly = m_polys[static_cast<std::size_t>(p)];
        return find(m_corners, poly.first, poly.corners, f);
    }

    int slotOf(int f, int p)
    {
        const Point& point = m_points[static_cast<std::size_t>(f)];
        return find(m_slots, point.first, point.degree, p);
    }

    int newPoly()
    {
        const std::size_t n = m_polys.size();
        if (n == m_in.valences.size())
            return None;
        if (n >= m_in.groups.size() || n >= m_in.flags.size() || m_in.valences[n] < 1 ||
            m_corners.size() + static_cast<std::size_t>(m_in.valences[n]) > m_room) {
            fail("a polygon of the mesh has an impossible size");
            return None;
        }
        m_polys.push_back({m_corners.size(), m_in.valences[n], m_in.groups[n], (m_in.flags[n] & 1) != 0});
        m_corners.resize(m_corners.size() + static_cast<std::size_t>(m_in.valences[n]), None);
        return static_cast<int>(n);
    }

    void component(int p)
    {
        m_queue.clear();
        for (int k = 0; k < m_polys[static_cast<std::size_t>(p)].corners && isOk(); ++k)
            openCorner(p, k);
        for (int f = isOk() ? pickPoint() : None; f != None && isOk(); f = pickPoint()) {
            fillRing(f);
            m_points[static_cast<std::size_t>(f)].isDone = true;
        }
    }

    void fillRing(int f)
    {
        for (int k = 0; k < m_points[static_cast<std::size_t>(f)].degree && isOk(); ++k) {
            if (slot(f, k) != None)
                continue;
            const int p = newPoly();
            if (p == None)
                return fail("the mesh ends before its rings are full");
            corner(p, 0) = f;
            attach(p, 0, f, k);
            finishPoly(p, k);
        }
    }

    std::size_t context(int p)
    {
        const int n = m_polys[static_cast<std::size_t>(p)].corners;
        if (n != 3 && n != 4)
            return n == 5 ? 6 : 7;
        std::int64_t sum = 0;
        std::int64_t known = 0;
        for (int i = 0; i < n; ++i)
            if (const int f = corner(p, i); f != None) {
                sum += m_points[static_cast<std::size_t>(f)].degree;
                ++known;
            }
        const std::int64_t mean = (n == 3 ? 6 : 4) * known;
        const std::size_t first = n == 3 ? 0 : 3;
        return first + (sum < mean ? 0 : sum == mean ? 1 : 2);
    }

    void openCorner(int p, int k)
    {
        const std::size_t c = context(p);
        if (m_nextDegree[c] == m_in.degrees[c].size())
            return fail("the mesh names more points than it has");
        const std::int32_t degree = m_in.degrees[c][m_nextDegree[c]++];
        if (degree == 0)
            return reopen(p, k);
        if (degree < 0 || m_slots.size() + static_cast<std::size_t>(degree) > m_room)
            return fail("a point of the mesh has an impossible degree");
        const int f = newPoint(degree);
        if (f == None)
            return;
        corner(p, k) = f;
        setSlot(f, 0, p);
        m_queue.push_back(f);
    }

    void reopen(int p, int k)
    {
        if (m_nextSplit >= m_in.splitSymbols.size() || m_nextSplit >= m_in.splitPositions.size())
            return fail("the mesh names more splits than it has");
        const std::int64_t back = m_in.splitSymbols[m_nextSplit];
        const std::int32_t position = m_in.splitPositions[m_nextSplit++];
        if (back < 1 || back > static_cast<std::int64_t>(m_queue.size()))
            return fail("a split of the mesh leads nowhere");
        const int f = m_queue[m_queue.size() - static_cast<std::size_t>(back)];
        if (position < 0 || position >= m_points[static_cast<std::size_t>(f)].degree)
            return fail("a split of the mesh leads nowhere");
        corner(p, k) = f;
        attach(p, k, f, position);
    }

    int newPoint(std::int32_t degree)
    {
        Point point{m_slots.size(), degree, degree, m_records, 0, m_maskWords.size()};
        if (degree <= 64) {
            const auto c = static_cast<std::size_t>(std::clamp(degree - 2, 0, 7));
            if (m_nextMask[c] == m_in.masks[c].size()) {
                fail("the mesh has too few masks");
                return None;
            }
            const std::uint64_t mask = m_in.masks[c][m_nextMask[c]++];
            m_maskWords.push_back(static_cast<std::uint32_t>(mask));
            m_maskWords.push_back(static_cast<std::uint32_t>(mask >> 32));
        } else {
            const std::size_t words = (static_cast<std::size_t>(degree) + 31) / 32;
            if (words > m_in.largeMasks.size() - m_nextLarge) {
                fail("the mesh has too few masks");
                return None;
            }
            const auto from = m_in.largeMasks.begin() + static_cast<std::ptrdiff_t>(m_nextLarge);
            m_maskWords.insert(m_maskWords.end(), from, from + static_cast<std::ptrdiff_t>(words));
            m_nextLarge += words;
        }
        for (std::size_t i = point.mask; i < m_maskWords.size(); ++i)
            point.records += static_cast<std::uint32_t>(std::popcount(m_maskWords[i]));
        m_records += point.records;
        m_slots.resize(m_slots.size() + static_cast<std::size_t>(degree), None);
        m_points.push_back(point);
        return static_cast<int>(m_points.size() - 1);
    }

    void setSlot(int f, int k, int p)
    {
        int& place = slot(f, k);
        if (place != p)
            --m_points[static_cast<std::size_t>(f)].free;
        place = p;
    }

    void attach(int p, int i, int f, int k)
    {
        setSlot(f, k, p);
        if (const int a = slot(f, k - 1); a != None)
            if (const int j = cornerOf(a, f); j != None && corner(p, i + 1) == None)
                corner(p, i + 1) = corner(a, j - 1);
        if (const int b = slot(f, k + 1); b != None)
            if (const int j = cornerOf(b, f); j != None && corner(p, i - 1) == None)
                corner(p, i - 1) = corner(b, j + 1);
    }

    // From corner `i` on, in steps of `way`, as far as neighbours know the next corner. @return where it stopped
    int walk(int p, int i, int k, int way, int end)
    {
        for (int v = corner(p, 0); i != end && isOk(); i += way) {
            const int w = corner(p, i);
            const int q = w == None ? None : slot(v, k - way);
            if (q == None)
                break;
            const int at = slotOf(w, q);
            if (at == None) {
                fail("neighbours of the mesh do not meet");
                break;
            }
            k = wrapped(at - way, w);
            attach(p, i, w, k);
            v = w;
        }
        return i;
    }

    int wrapped(int k, int f) const
    {
        const int degree = m_points[static_cast<std::size_t>(f)].degree;
        return (k + degree) % degree;
    }

    void finishPoly(int p, int k0)
    {
        const int n = m_polys[static_cast<std::size_t>(p)].corners;
        const int up = walk(p, 1, k0, 1, n);
        if (up == n)
            return;
        const int down = walk(p, n - 1, k0, -1, up - 1);
        for (int c = up; c <= down && isOk(); ++c)
            openCorner(p, c);
    }

    bool isDone(int f) const { return m_points[static_cast<std::size_t>(f)].isDone; }

    int pickPoint()
    {
        while (!m_queue.empty() && isDone(m_queue.back()))
            m_queue.pop_back();
        int best = None;
        std::size_t seen = 0;
        for (std::size_t i = m_queue.size(); i > 0 && seen < MostCandidates; --i) {
            const int f = m_queue[i - 1];
            if (isDone(f)) {
                m_queue.erase(m_queue.begin() + static_cast<std::ptrdiff_t>(i - 1));
                continue;
            }
            ++seen;
            if (best == None ||
                m_points[static_cast<std::size_t>(f)].free < m_points[static_cast<std::size_t>(best)].free)
                best = f;
        }
        return best;
    }

    bool isUsedUp() const
    {
        bool all = m_nextLarge == m_in.largeMasks.size() && m_nextSplit == m_in.splitSymbols.size();
        for (std::size_t c = 0; c < 8; ++c)
            all = all && m_nextDegree[c] == m_in.degrees[c].size() && m_nextMask[c] == m_in.masks[c].size();
        return all;
    }

    std::uint32_t record(int p, int f)
    {
        const Point& point = m_points[static_cast<std::size_t>(f)];
        const int k = slotOf(f, p);
        if (point.records == 0 || k == None)
            return Corner::NoRecord;
        std::uint32_t rank = 0;
        for (int i = 0; i <= k; i += 32) {
            const std::uint32_t word = m_maskWords[point.mask + static_cast<std::size_t>(i / 32)];
            const std::uint32_t upTo = k - i >= 31 ? ~0u : (2u << (k - i)) - 1;
            rank += static_cast<std::uint32_t>(std::popcount(word & upTo));
        }
        return point.firstRecord + (rank == 0 ? point.records : rank) - 1;
    }

    void collect(Connectivity& result)
    {
        for (int p = 0; p < static_cast<int>(m_polys.size()) && isOk(); ++p) {
            const Poly poly = m_polys[static_cast<std::size_t>(p)];
            for (int i = 0; i < poly.corners; ++i)
                if (corner(p, i) == None)
                    return fail("a polygon of the mesh lacks a corner");
            for (int i = 2; i < poly.corners && !poly.isCover; ++i)
                result.triangles.push_back({{at(p, 0), at(p, i - 1), at(p, i)}, poly.group});
        }
    }

    Corner at(int p, int i)
    {
        const int f = corner(p, i);
        return {static_cast<std::uint32_t>(f), record(p, f)};
    }

    const Topology& m_in;
    const char* m_error = nullptr;
    std::size_t m_room = 0;
    std::size_t m_steps = 0;
    std::vector<Poly> m_polys;
    std::vector<Point> m_points;
    std::vector<int> m_corners;
    std::vector<int> m_slots;
    std::vector<std::uint32_t> m_maskWords;
    std::vector<int> m_queue;
    std::array<std::size_t, 8> m_nextDegree{};
    std::array<std::size_t, 8> m_nextMask{};
    std::size_t m_nextLarge = 0;
    std::size_t m_nextSplit = 0;
    std::uint32_t m_records = 0;
};

} // namespace

Connectivity rebuild(const Topology& topology)
{
    return Rebuild(topology).run();
}

} // namespace ptx::jt::shapes
