// Loads a settings file into a node list, prints its sections and entries, changes a value and saves a copy.
//   cscript //nologo settings.js settings.ini copy.ini
// The library must be registered: regsvr32 zelUtilities.dll, or for yourself: regsvr32 /n /i:user zelUtilities.dll
var list = new ActiveXObject("zelUtilities.zelNodeList");
if (!list.LoadFromINI(WScript.Arguments.Item(0))) {
  WScript.Echo("cannot be read: " + WScript.Arguments.Item(0));
  WScript.Quit(1);
}

for (var sections = new Enumerator(list.RootNodes); !sections.atEnd(); sections.moveNext()) {
  WScript.Echo(sections.item().Text);
  for (var entries = new Enumerator(sections.item().Nodes); !entries.atEnd(); entries.moveNext())
    WScript.Echo("  " + entries.item().Cells("Value").Value + " = " + entries.item().Cells("Data").Value);
}

list.UpdateINIValue("Window", "Width", "1280");
if (!list.SaveAsINI(WScript.Arguments.Item(1))) WScript.Quit(1);
WScript.Echo("saved");
