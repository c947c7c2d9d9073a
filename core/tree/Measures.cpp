#include "core/tree/Measures.h"

#include "core/tree/Measure.h"

namespace ZemTree {

Measure* Measures::None()
{
    static Measure measure("None", "", "");
    return &measure;
}

Measure* Measures::Ohm()
{
    static Measure measure("Ohm", "Ohm", "Ом");
    return &measure;
}

Measure* Measures::Gradus()
{
    static Measure measure("Gradus", "°", "°");
    return &measure;
}

Measure* Measures::Second()
{
    static Measure measure("Second", "s", "с");
    return &measure;
}

Measure* Measures::Volt()
{
    static Measure measure("Volt", "V", "В");
    return &measure;
}

Measure* Measures::Ampere()
{
    static Measure measure("Ampere", "A", "А");
    return &measure;
}

Measure* Measures::Hertz()
{
    static Measure measure("Hertz", "Hz", "Гц");
    return &measure;
}

Measure* Measures::Percent()
{
    static Measure measure("Percent", "%", "%");
    return &measure;
}

const std::vector<Measure*>& Measures::all()
{
    static const std::vector<Measure*> measures{None(), Ohm(),    Gradus(), Second(),
                                                Volt(), Ampere(), Hertz(),  Percent()};
    return measures;
}

Measure* Measures::find(const std::string& key)
{
    for (Measure* measure : all()) {
        if (measure->getKey() == key)
            return measure;
    }
    return nullptr;
}

} // namespace ZemTree
