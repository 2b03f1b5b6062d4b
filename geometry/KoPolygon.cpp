#include "geometry/KoPolygon.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

// Whether p lies on the segment a-b, allowing for the rounding of coordinates that were computed rather
// than typed: the distance from the line must be below 1e-10 of the segment length.
bool OnSegment(const KoPolygon::Vertex& a, const KoPolygon::Vertex& b, double px, double py)
{
    if (px < std::min(a.x, b.x) || px > std::max(a.x, b.x) || py < std::min(a.y, b.y) || py > std::max(a.y, b.y))
        return false;
    const double cross = (b.x - a.x) * (py - a.y) - (b.y - a.y) * (px - a.x);
    const double length = std::hypot(b.x - a.x, b.y - a.y);
    return std::fabs(cross) <= 1e-10 * std::max(length * length, 1.0);
}

}  // namespace

KoPolygon::KoPolygon(std::vector<Vertex> vertices) : m_vertices(std::move(vertices)) {}

void KoPolygon::Add(double x, double y) { m_vertices.push_back({x, y}); }

void KoPolygon::Clear() { m_vertices.clear(); }

double KoPolygon::SignedArea() const
{
    const size_t n = m_vertices.size();
    if (n < 3)
        return 0.0;
    // Coordinates relative to the first vertex: survey coordinates of several million metres would
    // otherwise cancel away the digits of a small parcel's area.
    const Vertex& o = m_vertices[0];
    double twice = 0.0;
    for (size_t i = 1; i + 1 < n; ++i) {
        const Vertex& a = m_vertices[i];
        const Vertex& b = m_vertices[i + 1];
        twice += (a.x - o.x) * (b.y - o.y) - (b.x - o.x) * (a.y - o.y);
    }
    return 0.5 * twice;
}

double KoPolygon::Area() const { return std::fabs(SignedArea()); }

double KoPolygon::Perimeter() const
{
    const size_t n = m_vertices.size();
    if (n < 2)
        return 0.0;
    double sum = 0.0;
    for (size_t i = 0; i < n; ++i) {
        const Vertex& a = m_vertices[i];
        const Vertex& b = m_vertices[(i + 1) % n];
        sum += std::hypot(b.x - a.x, b.y - a.y);
    }
    return sum;
}

bool KoPolygon::Centroid(double& cx, double& cy) const
{
    const size_t n = m_vertices.size();
    if (n < 3)
        return false;
    const Vertex& o = m_vertices[0];
    double twiceArea = 0.0;
    double sx = 0.0;
    double sy = 0.0;
    for (size_t i = 1; i + 1 < n; ++i) {
        const double ax = m_vertices[i].x - o.x;
        const double ay = m_vertices[i].y - o.y;
        const double bx = m_vertices[i + 1].x - o.x;
        const double by = m_vertices[i + 1].y - o.y;
        const double cross = ax * by - bx * ay;
        twiceArea += cross;
        sx += (ax + bx) * cross;
        sy += (ay + by) * cross;
    }
    if (std::fabs(twiceArea) < 1e-10)
        return false;
    cx = o.x + sx / (3.0 * twiceArea);
    cy = o.y + sy / (3.0 * twiceArea);
    return true;
}

bool KoPolygon::Contains(double px, double py) const
{
    const size_t n = m_vertices.size();
    if (n == 0)
        return false;
    for (size_t i = 0; i < n; ++i)
        if (OnSegment(m_vertices[i], m_vertices[(i + 1) % n], px, py))
            return true;
    // Crossing number of a ray towards +x; each edge counts its lower end and not its upper one, so a ray
    // through a vertex is counted once.
    bool inside = false;
    for (size_t i = 0, j = n - 1; i < n; j = i++) {
        const Vertex& a = m_vertices[i];
        const Vertex& b = m_vertices[j];
        if ((a.y > py) != (b.y > py)) {
            const double xCross = a.x + (py - a.y) * (b.x - a.x) / (b.y - a.y);
            if (px < xCross)
                inside = !inside;
        }
    }
    return inside;
}

KoBoundingBox2d KoPolygon::BoundingBox() const
{
    KoBoundingBox2d box;
    for (const Vertex& v : m_vertices)
        box.Add(v.x, v.y);
    return box;
}

void KoPolygon::Reverse() { std::reverse(m_vertices.begin(), m_vertices.end()); }
