#include "Scrivo/TemplatesGraphicsRecognizer.h"

namespace Scrivo {
TemplatesGraphicsRecognizer::TemplatesGraphicsRecognizer() = default;
TemplatesGraphicsRecognizer& TemplatesGraphicsRecognizer::getInstance() {
    static TemplatesGraphicsRecognizer m_Instance;
    return m_Instance;
}
void TemplatesGraphicsRecognizer::loadTemplatesFromFile(std::string, std::string, std::string,
                                                        std::string) {}
RecognitionResult TemplatesGraphicsRecognizer::recognize(std::vector<Point2D>) const {
    return {0, "Unknown", -1.0};
}
}  // namespace Scrivo
