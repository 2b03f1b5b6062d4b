#pragma once

#include "geometry/KoBoundingBox2d.h"

#include <cstddef>
#include <vector>

// Closed polygon in the plane (a parcel outline, a building footprint). The last vertex joins the first;
// the closing vertex is not stored twice.
class KoPolygon {
public:
    struct Vertex {
        double x;
        double y;
    };

    KoPolygon() = default;
    explicit KoPolygon(std::vector<Vertex> vertices);
    virtual ~KoPolygon() = default;

    void Add(double x, double y);
    void Clear();
    size_t Count() const { return m_vertices.size(); }
    const Vertex& operator[](size_t index) const { return m_vertices.at(index); }
    const std::vector<Vertex>& Vertices() const { return m_vertices; }

    // Shoelace area: positive when the vertices run counter-clockwise (x east, y north), negative clockwise,
    // 0.0 for fewer than three vertices.
    double SignedArea() const;
    double Area() const;
    double Perimeter() const;

    // Area centroid; false (and nothing written) when the polygon encloses no area.
    bool Centroid(double& cx, double& cy) const;

    // Boundary counts as inside, as for KoRectangle.
    bool Contains(double px, double py) const;

    KoBoundingBox2d BoundingBox() const;

    void Reverse();

private:
    std::vector<Vertex> m_vertices;
};
