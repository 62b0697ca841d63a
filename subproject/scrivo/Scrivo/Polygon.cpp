#include "Scrivo/Polygon.h"
