#include <doctest.h>

#include <windows.h>

#include <objbase.h>

int main(int count, char** arguments)
{
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const int status = doctest::Context(count, arguments).run();
    CoUninitialize();
    return status;
}
