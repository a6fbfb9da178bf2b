' A late-bound host: creates the provider by its ProgID and calls the class's own member.
Option Explicit
Dim provider
Set provider = CreateObject("Vellumo.SISSProvider")
WScript.Echo "IsPersonaleStudio: " & CInt(provider.IsPersonaleStudio())
