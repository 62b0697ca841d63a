#include "Scrivo/TemplatesGraphicsRecognizer.h"
