# Loads a settings file into a node list, prints each node while it is added, then its sections and entries,
# changes a value and saves a copy.
#   pip install pywin32
#   python settings.py settings.ini copy.ini
# The library must be registered: regsvr32 zelUtilities.dll, or for yourself: regsvr32 /n /i:user zelUtilities.dll
import sys

import win32com.client


class NodeListEvents:
    def OnNodeAdded(self, oNode):
        print("added", win32com.client.Dispatch(oNode).Key)


file, copy = sys.argv[1:]
nodes = win32com.client.DispatchWithEvents("zelUtilities.zelNodeList", NodeListEvents)
if not nodes.LoadFromINI(file):
    sys.exit("cannot be read: " + file)

for section in nodes.RootNodes:
    print(section.Text)
    for entry in section.Nodes:
        print("  {} = {}".format(entry.Cells.Item("Value").Value, entry.Cells.Item("Data").Value))

nodes.UpdateINIValue("Window", "Width", "1280")
if not nodes.SaveAsINI(copy):
    sys.exit(1)
print("saved")
