' Under the stock host, which shows nothing but an exit code.
Dim list
On Error Resume Next
Set list = CreateObject("zelUtilities.zelNodeList")
If Err.Number <> 0 Then WScript.Quit 1
list.Create "", "k", "t"
If Err.Number <> 0 Then WScript.Quit 2
If list.Count = 1 Then WScript.Quit 42
WScript.Quit 3
