' What a script can reach: the class's own members. The host's interfaces (ICCEProvider and the others) are reached by
' QueryInterface, which scripts cannot do. The SISS client, or siss-simulato, must be registered for this bitness.
Option Explicit
Dim provider
Set provider = CreateObject("Vellumo.SISSProvider")
WScript.Echo "IsPersonaleStudio: " & provider.IsPersonaleStudio()
