// scratch probe: all candidates of both families
#include "Beautifier/Beautifier.h"
#include "Beautifier/Evidence.h"
#include "Beautifier/Levelling.h"
#include "Beautifier/QuadrangleKinds.h"
#include "Beautifier/TriangleKinds.h"

#include <cstdio>
#include <iostream>
#include <chrono>
#include <vector>
using namespace Scrivo; using namespace Scrivo::beautifier;
static void one(const PolygonFit&f,const PolygonInk&ink,const PolygonFit&free,int name,double l,bool comma){
  std::printf("%s{\"k\":%d,\"d\":%.8g,\"lean\":%.8g,\"c\":[",comma?",":"",name,std::isfinite(f.squares)?100*excess(ink,f,free):1e3,l*57.29578);
  for(int k=0;k<f.edges;++k) std::printf("%s[%.7g,%.7g]",k?",":"",f.corners[k].x,f.corners[k].y);
  std::printf("]}"); }
static void show(const PolygonInk& ink, std::span<const Kind> kinds,int free){
  const PolygonFit f=fitFreePolygon(ink); std::printf("[");
  one(f,ink,f,free,lean(f.axis),false);
  for(const Kind&k:kinds) for(int i=0;i<k.firsts;++i){const PolygonFit p=fitPolygon(ink,k.rule,i); one(p,ink,f,k.name,lean(p.axis),true);}
  std::printf("]"); }
int main(int argc,char**){
  size_t count; const double W=1e4; Beautifier b; double best=0; int n=0;
  while(std::cin>>count){ std::vector<Point2D> s(count); for(auto&p:s){std::cin>>p.x>>p.y; p.x/=W;p.y/=W;}
    const auto a=b.beautify(s,W,W);
    const Frame f=measure(s,W,W);
    if(!f.measurable||f.extent<=0){std::printf("{\"figure\":0}\n");continue;}
    const Evidence e=examine(resample(s,W,W,f));
    std::printf("{\"figure\":%zu,\"frame\":[%.8g,%.8g,%.8g]",a.figure.index(),f.centre.x,f.centre.y,f.extent);
    if(e.closed){ const auto& c=*e.closed;
      std::span<const Vec> pts(e.fine.data()+c.closure.first, size_t(c.closure.end-c.closure.first+1));
      const auto t0=std::chrono::steady_clock::now();
      const PolygonInk q=inkAlong(pts,{c.quadrangle.at.data(),4}); const auto fq=chooseQuadrangle(q);
      const auto t1=std::chrono::steady_clock::now(); best+=std::chrono::duration<double>(t1-t0).count(); ++n;
      const PolygonInk t=inkAlong(pts,{c.triangle.at.data(),3});
      std::printf(",\"choice\":%d,\"quad\":",fq.kind); show(q,quadrangleKinds(),ANY_QUADRANGLE); std::printf(",\"tri\":"); show(t,triangleKinds(),ANY_TRIANGLE);
      std::printf(",\"ell\":{\"c\":[%.8g,%.8g],\"a\":%.8g,\"b\":%.8g,\"angle\":%.8g,\"rms\":%.8g},\"loop\":[",c.ellipse.centre.x,c.ellipse.centre.y,c.ellipse.a,c.ellipse.b,c.ellipse.angle,c.ellipse.rms);
      for(int i=0;i<COARSE-1;++i) std::printf("%s[%.6g,%.6g]",i?",":"",c.loop[i].x,c.loop[i].y);
      std::printf("]");
    }
    std::printf("}\n");
  }
  if(argc>1) std::fprintf(stderr,"%g us per quad\n",1e6*best/n);
}
