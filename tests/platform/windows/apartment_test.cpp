// Every host that loads the library has initialized COM on its thread; for the unit tests this does.
#include <windows.h>

#include <objbase.h>

namespace
{

struct ThreadApartment
{
    ThreadApartment() { static_cast<void>(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)); }
    ~ThreadApartment() { CoUninitialize(); }
    ThreadApartment(const ThreadApartment&) = delete;
    ThreadApartment& operator=(const ThreadApartment&) = delete;
};

const ThreadApartment threadApartment;

} // namespace
