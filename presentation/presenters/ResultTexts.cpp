#include "presentation/presenters/ResultTexts.h"

#include "core/tree/Deviation.h"
#include "results/NumericAssessment.h"
#include "results/ResultNumeric.h"
#include "results/ResultString.h"
#include "results/StringAssessment.h"

namespace ZemTree {

namespace {

std::string orDash(const std::string& text)
{
    return text.empty() ? std::string("-") : text;
}

} // namespace

ResultTexts ResultTexts::of(const ResultNumeric* result)
{
    ResultTexts texts;
    if (result) {
        if (const NumericAssessment* const assessment = result->getAssessment())
            texts.setting = assessment->getDisplayValue();
        texts.measurment = result->getMeasurmentDisplayValue();
        texts.deviation = result->getDeviation().getDisplayValue();
    }
    texts.setting = orDash(texts.setting);
    texts.measurment = orDash(texts.measurment);
    texts.deviation = orDash(texts.deviation);
    return texts;
}

ResultTexts ResultTexts::of(const ResultString* result)
{
    ResultTexts texts;
    if (result) {
        if (const StringAssessment* const assessment = result->getAssessment())
            texts.setting = assessment->getValidValue();
        texts.measurment = result->getMeasurment();
    }
    texts.setting = orDash(texts.setting);
    texts.measurment = orDash(texts.measurment);
    texts.deviation = orDash(texts.deviation);
    return texts;
}

} // namespace ZemTree
