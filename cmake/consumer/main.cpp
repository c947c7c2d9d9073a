#include <ZemTreeRelay/ZemTreeRelay.h>
#include <iostream>

int main()
{
    ZemTree::Node root("Root");
    root.add(std::make_unique<ZemTree::Node>("Child"));
    std::cout << lng::TreeRelay::get("result_ok") << ' ' << root.size() << '\n';
    return root.size() == 1 ? 0 : 1;
}
