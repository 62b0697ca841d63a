#include "Scrivo/Ellipse.h"
