#include <ZemTreeRelay/ZemTreeRelayGui.h>
#include <iostream>

// Runs without a display: presenters are plain objects until a widget is asked for.
int main()
{
    Zem::EmptyViewPresenter empty;
    const auto parsed = Zem::NumericEntry::parse("1,5", Zem::NumericEntry::Mode::Real, 0.0, 10.0);
    std::cout << parsed.value << ' ' << (empty.getView() != nullptr) << '\n';
    return parsed.isAccepted && parsed.value == 1.5 && empty.getView() != nullptr ? 0 : 1;
}
