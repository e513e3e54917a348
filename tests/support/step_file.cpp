#include "support/step_file.h"

// The library that reads and writes STEP files keeps its own tables for as long as the program runs, and loses a few
// bytes with each file that it writes. Only programs that link this file do either.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions() {
  return "leak:libTKXSBase\nleak:libTKernel\nleak:libTKSTEP\nleak:libTKVCAF\n";
}

namespace test {

std::string stepTetrahedron() {
  return R"(ISO-10303-21;
HEADER;
FILE_DESCRIPTION((''),'2;1');
FILE_NAME('t','2024-01-01T00:00:00',(''),(''),'','','');
FILE_SCHEMA(('AUTOMOTIVE_DESIGN { 1 0 10303 214 1 1 1 1 }'));
ENDSEC;
DATA;
#1=APPLICATION_CONTEXT('');
#2=PRODUCT_CONTEXT('',#1,'mechanical');
#3=PRODUCT('T','T','',(#2));
#4=PRODUCT_DEFINITION_FORMATION('','',#3);
#5=PRODUCT_DEFINITION_CONTEXT('part definition',#1,'design');
#6=PRODUCT_DEFINITION('design','',#4,#5);
#7=PRODUCT_DEFINITION_SHAPE('','',#6);
#8=SHAPE_DEFINITION_REPRESENTATION(#7,#20);
#10=(LENGTH_UNIT() NAMED_UNIT(*) SI_UNIT(.MILLI.,.METRE.));
#11=(NAMED_UNIT(*) PLANE_ANGLE_UNIT() SI_UNIT($,.RADIAN.));
#12=(NAMED_UNIT(*) SI_UNIT($,.STERADIAN.) SOLID_ANGLE_UNIT());
#13=(GEOMETRIC_REPRESENTATION_CONTEXT(3) GLOBAL_UNIT_ASSIGNED_CONTEXT((#10,#11,#12)) REPRESENTATION_CONTEXT('',''));
#20=FACETED_BREP_SHAPE_REPRESENTATION('',(#21),#13);
#21=FACETED_BREP('',#22);
#22=CLOSED_SHELL('',(#31,#32,#33,#34));
#31=FACE_SURFACE('',(#41),#91,.T.);
#32=FACE_SURFACE('',(#42),#92,.T.);
#33=FACE_SURFACE('',(#43),#93,.T.);
#34=FACE_SURFACE('',(#44),#94,.T.);
#41=FACE_OUTER_BOUND('',#51,.T.);
#42=FACE_OUTER_BOUND('',#52,.T.);
#43=FACE_OUTER_BOUND('',#53,.T.);
#44=FACE_OUTER_BOUND('',#54,.T.);
#51=POLY_LOOP('',(#61,#63,#62));
#52=POLY_LOOP('',(#61,#62,#64));
#53=POLY_LOOP('',(#61,#64,#63));
#54=POLY_LOOP('',(#62,#63,#64));
#61=CARTESIAN_POINT('',(0.,0.,0.));
#62=CARTESIAN_POINT('',(30.,0.,0.));
#63=CARTESIAN_POINT('',(0.,40.,0.));
#64=CARTESIAN_POINT('',(0.,0.,50.));
#71=DIRECTION('',(0.,0.,-1.));
#72=DIRECTION('',(0.,-1.,0.));
#73=DIRECTION('',(-1.,0.,0.));
#74=DIRECTION('',(20.,15.,12.));
#81=AXIS2_PLACEMENT_3D('',#61,#71,$);
#82=AXIS2_PLACEMENT_3D('',#61,#72,$);
#83=AXIS2_PLACEMENT_3D('',#61,#73,$);
#84=AXIS2_PLACEMENT_3D('',#62,#74,$);
#91=PLANE('',#81);
#92=PLANE('',#82);
#93=PLANE('',#83);
#94=PLANE('',#84);
ENDSEC;
END-ISO-10303-21;
)";
}

}  // namespace test
