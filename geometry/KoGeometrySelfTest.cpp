#include "geometry/KoGeometrySelfTest.h"

#include "geometry/KoBoundingBox2d.h"
#include "geometry/KoBoundingBox3d.h"

#include <string>

bool Selftest_Ko3d(const KoTextSink& sink)
{
    sink(std::string(40, '*'));
    sink("* Selftest_Ko3d");

    const KoBoundingBox2d square(0, 0, 1, 1);
    const int apart2d = square.Overlaps(KoBoundingBox2d(2, 2, 3, 3), true);
    const int crossing2d = square.Overlaps(KoBoundingBox2d(0.5, 0.5, 2, 2), true);
    sink(KoFormatLine("2d Overlap test | false, true | %d %d", apart2d, crossing2d));

    // Unit cube against cubes that only touch it: across a face in x, in y, in z, and at one corner.
    const KoBoundingBox3d cube(0, 0, 0, 1, 1, 1);
    const KoBoundingBox3d touching[4] = {KoBoundingBox3d(1, 0, 0, 2, 1, 1), KoBoundingBox3d(0, 1, 0, 1, 2, 1),
                                         KoBoundingBox3d(0, 0, 1, 1, 1, 2), KoBoundingBox3d(1, 1, 1, 2, 2, 2)};
    int with[4];
    int without[4];
    for (int i = 0; i < 4; ++i) {
        with[i] = cube.Overlaps(touching[i], true);
        without[i] = cube.Overlaps(touching[i], false);
    }
    sink(KoFormatLine("3D Overlap Test: | true true true true     | %d %d %d %d", with[0], with[1], with[2], with[3]));
    sink("Ohne Neighbour");
    sink(KoFormatLine("3D Overlap Test: | false false false false | %d %d %d %d", without[0], without[1], without[2],
                      without[3]));

    bool allAsExpected = apart2d == 0 && crossing2d == 1;
    for (int i = 0; i < 4; ++i)
        allAsExpected = allAsExpected && with[i] == 1 && without[i] == 0;
    return allAsExpected;
}
