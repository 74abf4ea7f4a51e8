' What a script sees of calls that fail.
Option Explicit
Dim list, cat
Set list = CreateObject("zelUtilities.zelNodeList")
Set cat = CreateObject("zelUtilities.zelStringCat")
On Error Resume Next

list.NoSuchThing
Equal Err.Number, 438, "an unknown name"
Err.Clear
list.Create "only one"
Equal Err.Number, 449, "a missing argument"
Equal Err.Source, "zelUtilities.zelNodeList", "its source"
Equal Err.Description, "Argument not optional", "its description"
Err.Clear
list.Create "", "a", "b", "c", "d", "e", "f"
Equal Err.Number, 450, "too many arguments"
Err.Clear
list.DefaultExpandedState = "neither"
Equal Err.Number, 13, "a value that does not convert"
Err.Clear
list.Count = 5
Equal Err.Number, 438, "a property that is only read"
Err.Clear
list.CopySection cat
Equal Err.Number, 13, "an object of another class"
Err.Clear
cat.Find "x", 0
Equal Err.Number <> 0, True, "an operation that raises again"
Equal Err.Source, "zelStringCat.Find", "its own source"
Err.Clear
Dim node
Set node = list.Create("", "k", "t")
list.Clear
Equal node.Key, "k", "a node outlives its list's content"
Set list = Nothing
Equal node.Text, "t", "and the list itself"
Equal Err.Number, 0, "no error"
Finished
