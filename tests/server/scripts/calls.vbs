' Calls of every kind, as a VBScript client writes them.
Option Explicit
Dim list, node, other, item, keys, xml, document, cat, registry, at, pair, misc, numbers, bytes(3)

Set list = CreateObject("zelUtilities.zelNodeList")
list.CreateColumn "A", "First"
list.CreateColumn "B", "Second", , 8
Equal list.Columns.Count, 2, "left-out optional arguments"
Equal list.Columns("B").Name, "Second", "surplus arguments reach the default member"
Equal list.Columns("B").CellType, 8, "an argument after a left-out one"

Set node = list.Create("", "k1", "One", 42)
Set other = list.Create("k1", "k2", "Two")
Equal list.Count, 2, "Count"
Equal LIST.count, 2, "names in any letter case"
Equal node Is list.Item("k1"), True, "identity"
Equal node Is list("k2"), False, "identity of another"
Equal other.Parent Is node, True, "identity through a property"
Equal list("none") Is Nothing, True, "Nothing"
node.Cells("A").Value = 5.5
Equal node.Cells("A").Value, 5.5, "a cell"
node.Tag = Null
Equal IsNull(node.Tag), True, "Null"
node.Tag = Empty
Equal IsEmpty(node.Tag), True, "Empty"
node.Tag = CDate("2024-02-29")
Equal VarType(node.Tag), 7, "a date stays a date"
node.Tag = CCur(1.25)
Equal VarType(node.Tag), 6, "a currency stays a currency"
Set node.Tag = other
Equal node.Tag Is other, True, "an object assigned by reference"
node.Tag = Array(1, "two")
pair = node.Tag
Equal pair(1), "two", "an array"

keys = ""
For Each item In list
  For Each other In list
    keys = keys & item.Key & other.Key & " "
  Next
Next
Equal keys, "k1k1 k1k2 k2k1 k2k2 ", "two enumerations at once over one collection"

at = 0
For Each item In list
  at = at + 1
  If at < 5 Then list.Create "", "new" & at, ""
Next
Equal list.Count, 6, "a list that grows while it is enumerated"
For Each item In list
  list.Remove item.Key
Next
Equal list.Count, 0, "a list that is emptied while it is enumerated"

Set xml = CreateObject("zelUtilities.zelXML")
Equal xml.zel_ToXML("a<b"), "a&lt;b", "a global operation"
Set document = CreateObject("MSXML.DOMDocument")
document.loadXML "<a><b>t</b></a>"
Equal xml.zel_ValueFromElement("b", document.documentElement, ""), "t", "an object of the system's goes in"
Set registry = CreateObject("zelUtilities.zelRegistry")
Equal IsEmpty(registry.zel_GetRegistryValue(&H80000001, "None", "None")), True, "a reference left out"
Equal registry.zel_GetRegistryValue(&H80000001, "None", "None", "d"), "d", "a reference to a constant"
Set cat = CreateObject("zelUtilities.zelStringCat")
cat.Separator = ","
cat.Concatenate "a"
cat.Concatenate "b"
Equal cat.Complete(), "a,b", "another class"
Equal cat.length, 3, "a read-only property"

Set misc = CreateObject("zelUtilities.zelMisc")
numbers = Array(1, "2.5")
misc.zel_AppendArray numbers, Array(Empty, CCur(3)), 2
Equal numbers(0) & " " & numbers(1) & " " & numbers(2) & " " & numbers(3), "1 2.5 0 6", "an array for doubles"
bytes(0) = True
bytes(2) = "255"
Equal CreateObject("zelUtilities.zelConversions").zel_MotorolaBytesToLong(bytes), -16711936, "an array for bytes"
On Error Resume Next
misc.zel_AppendArray numbers, Array("x")
Equal Err.Number & " " & numbers(3), "13 6", "an element that is no double"
Err.Clear
misc.zel_AppendArray bytes, numbers
Equal Err.Number & " " & bytes(2), "10 255", "an array that cannot grow"
Finished
