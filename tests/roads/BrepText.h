#pragma once

/// A BREP file of one rectangle, 4 by 6 at the height 3.
inline constexpr char RectangleBrep[] = R"brep(DBRep_DrawableShape

CASCADE Topology V3, (c) Open Cascade
Locations 0
Curve2ds 4
1 0 0 0 1 
1 0 0 1 0 
1 4 0 0 1 
1 0 6 1 0 
Curves 4
1 0 0 3 -0 1 0 
1 0 0 3 1 0 -0 
1 4 0 3 -0 1 0 
1 0 6 3 1 0 -0 
Polygon3D 0
PolygonOnTriangulations 0
Surfaces 1
1 0 0 3 0 0 1 1 0 -0 -0 1 0 
Triangulations 0

TShapes 10
Ve
1e-07
0 0 3
0 0

0101101
*
Ve
1e-07
0 6 3
0 0

0101101
*
Ed
 1e-07 1 1 0
1  1 0 0 6
2  1 1 0 0 6
0

0101000
+10 0 -9 0 *
Ve
1e-07
4 0 3
0 0

0101101
*
Ed
 1e-07 1 1 0
1  2 0 0 4
2  2 1 0 0 4
0

0101000
+10 0 -7 0 *
Ve
1e-07
4 6 3
0 0

0101101
*
Ed
 1e-07 1 1 0
1  3 0 0 6
2  3 1 0 0 6
0

0101000
+7 0 -5 0 *
Ed
 1e-07 1 1 0
1  4 0 0 4
2  4 1 0 0 4
0

0101000
+9 0 -5 0 *
Wi

0101100
-8 0 +6 0 +4 0 -3 0 *
Fa
0  1e-07 1 0

1101000
+2 0 *

+1 0 )brep";
