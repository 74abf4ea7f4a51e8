' Loads a settings file into a node list, prints its sections and entries, changes a value and saves a copy.
'   cscript //nologo settings.vbs settings.ini copy.ini
' The library must be registered: regsvr32 zelUtilities.dll, or for yourself: regsvr32 /n /i:user zelUtilities.dll
Option Explicit
Dim list, section, entry

Set list = CreateObject("zelUtilities.zelNodeList")
If Not list.LoadFromINI(WScript.Arguments(0)) Then
  WScript.Echo "cannot be read: " & WScript.Arguments(0)
  WScript.Quit 1
End If

For Each section In list.RootNodes
  WScript.Echo section.Text
  For Each entry In section.Nodes
    WScript.Echo "  " & entry.Cells("Value").Value & " = " & entry.Cells("Data").Value
  Next
Next

list.UpdateINIValue "Window", "Width", "1280"
If Not list.SaveAsINI(WScript.Arguments(1)) Then WScript.Quit 1
WScript.Echo "saved"
