' What a host sees where the SISS client is not installed. Ends with 3 when creating the provider fails.
Option Explicit
Dim provider
On Error Resume Next
Set provider = CreateObject("Vellumo.SISSProvider")
If Err.Number <> 0 Then
    WScript.Echo Err.Number & " " & Err.Source & ": " & Err.Description
    WScript.Quit 3
End If
