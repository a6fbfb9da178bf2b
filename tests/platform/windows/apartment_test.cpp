// Every host that loads the library has initialized COM on its thread; for the unit tests this does.
#include <windows.h>

#include <objbase.h>

namespace
{

struct Apartment
{
    Apartment() { static_cast<void>(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)); }
    ~Apartment() { CoUninitialize(); }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
};

const Apartment apartment;

} // namespace
