// scratch probe
#include "Beautifier/Beautifier.h"
#include "Beautifier/Evidence.h"
#include "Beautifier/QuadrangleKinds.h"
#include "Beautifier/TriangleKinds.h"

#include <cstdio>
#include <iostream>
#include <chrono>
#include <vector>
using namespace Scrivo; using namespace Scrivo::beautifier;
template<size_t N> void show(const std::array<PolygonFit,N>& fits, const PolygonInk& ink){
  std::printf("{\"size\":%.6g,\"count\":%.6g,\"fits\":[",ink.size,ink.count);
  for(size_t i=0;i<N;++i){ std::printf("%s{\"ss\":%.8g,\"c\":[", i?",":"", std::isfinite(fits[i].squares)?fits[i].squares:1e9);
    for(int k=0;k<fits[i].edges;++k) std::printf("%s[%.7g,%.7g]",k?",":"",fits[i].corners[k].x,fits[i].corners[k].y);
    std::printf("]}"); }
  std::printf("]}");
}
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
      const PolygonInk q=inkAlong(pts,{c.quadrangle.at.data(),4}); const auto fq=fitQuadrangles(q);
      const auto t1=std::chrono::steady_clock::now(); best+=std::chrono::duration<double>(t1-t0).count(); ++n;
      const PolygonInk t=inkAlong(pts,{c.triangle.at.data(),3}); const auto ft=fitTriangles(t);
      std::printf(",\"quad\":"); show(fq,q); std::printf(",\"tri\":"); show(ft,t);
      std::printf(",\"ell\":{\"c\":[%.8g,%.8g],\"a\":%.8g,\"b\":%.8g,\"angle\":%.8g,\"rms\":%.8g},\"first\":%d,\"last\":%d,\"end\":%d,\"loop\":[",c.ellipse.centre.x,c.ellipse.centre.y,c.ellipse.a,c.ellipse.b,c.ellipse.angle,c.ellipse.rms,c.closure.first,c.closure.last,c.closure.end);
      for(int i=0;i<COARSE-1;++i) std::printf("%s[%.6g,%.6g]",i?",":"",c.loop[i].x,c.loop[i].y);
      std::printf("]");
    }
    const auto& l=e.line; std::printf(",\"line\":[%.8g,%.8g,%.8g,%.8g],\"vertex\":[%.8g,%.8g],\"ends\":[%.8g,%.8g,%.8g,%.8g]}\n",l.centre.x,l.centre.y,l.along.x,l.along.y,e.vertex.at[0].x,e.vertex.at[0].y,e.points.front().x,e.points.front().y,e.points.back().x,e.points.back().y);
  }
  if(argc>1) std::fprintf(stderr,"%g us per quad\n",1e6*best/n);
}
