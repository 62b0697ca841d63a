#include "Scrivo/ScrivoUtil.h"
