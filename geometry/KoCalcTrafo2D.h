#pragma once

#include "geometry/KoTrafo2d.h"
#include "points/KoPointList.h"

#include <cstddef>
#include <functional>

class KoBoundingBox2d;
class KoVector;

// Least-squares estimation of a plane transformation from pairs of identically numbered points: the source
// list supplies (x, y), the reference list the target (X, Y). Each estimator builds augmented normal
// equations observation by observation (two per pair, weight 1) and solves them by Cholesky. The projective
// estimate is the direct, linearised one (denominators multiplied out, no iteration).
//
// The estimators work on the coordinates as given. With survey coordinates of millions of metres the
// normal equations of the richer types lose most of their digits; reduce both lists to a nearby origin
// first when the residuals matter.
class KoCalcTrafo2D : public KoTrafo2d {
public:
    // Without a reference list the transformation uses (and owns) a list of its own, filled by the caller.
    explicit KoCalcTrafo2D(KoPointList* reference = nullptr);
    ~KoCalcTrafo2D() override = default;
    // The reference pointer may point into the object itself, so copies would share or dangle.
    KoCalcTrafo2D(const KoCalcTrafo2D&) = delete;
    KoCalcTrafo2D& operator=(const KoCalcTrafo2D&) = delete;

    KoPointList& ReferenceList() { return *m_reference; }
    KoPointList& OwnList() { return m_ownList; }

    // m = sqrt(p1^2 + p3^2) of the last Helmert estimate, 1.0 before one.
    double Scale() const { return m_scale; }
    // Sum of the squared residuals [vv] of the observation equations of the last estimate (for the
    // projective type these are the linearised equations), and the mean error of unit weight
    // sqrt([vv] / redundancy), 0.0 without redundancy. A normal system that could not be solved leaves
    // the parameters at 0.0 and shows here as a large [vv].
    double ResidualSum() const { return m_residualSum; }
    double MeanError() const { return m_meanError; }

    // Richest type the number of points supports: <2 None, 2 Helmert, 3 Affin, 4..9 Projektiv,
    // >=10 Polynomial.
    static int32_t RichestTypeByCount(size_t pointCount);
    // Of a given list, or of the reference list when none is given.
    int32_t RichestTypeByCount(const KoPointList* list = nullptr) const;

    // Richest type that the number and the spread of the points support: Projektiv and Polynomial need a
    // point in the centre third and in each quarter of the bounding rectangle, else Affin is the limit.
    static int32_t RichestType(const KoPointList& source, const KoBoundingBox2d& bounds);
    // The same, with the bounding rectangle of the source points.
    static int32_t RichestType(const KoPointList& source);

    // Each returns false and leaves the transformation unchanged when the source list holds fewer points
    // than the type's minimum (2, 3, 4, 10). The minimum counts every source point, paired or not.
    bool EstimateHelmert(const KoPointList& source);
    bool EstimateAffin(const KoPointList& source);
    bool EstimateProjektiv(const KoPointList& source);
    bool EstimatePolynomial(const KoPointList& source);

private:
    // Fills the two observation vectors (u coefficients, then the observed value) of one pair.
    using ObservationFiller =
        std::function<void(double x, double y, double X, double Y, KoVector& forX, KoVector& forY)>;

    // Accumulates and solves the normal equations of u unknowns; the solution lands in solution(1 ... u).
    bool Solve(const KoPointList& source, int unknowns, size_t minimumPoints, const ObservationFiller& fill,
               KoVector& solution);
    // Estimates a type whose parameters are the unknowns in order (all but Helmert) and sets the type.
    bool EstimateInOrder(const KoPointList& source, int32_t type, size_t minimumPoints,
                         const ObservationFiller& fill);

    KoPointList m_ownList;
    KoPointList* m_reference;
    double m_residualSum = 0.0;
    double m_meanError = 0.0;
    double m_scale = 1.0;
};
