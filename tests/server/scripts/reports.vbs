' An operation that reports its failure and does not raise it.
Option Explicit
Dim list
Set list = CreateObject("zelUtilities.zelNodeList")
list.CreateColumn "A"
list.Create "", "k", "t"
Equal list.RemoveColumn("A"), False, "its answer"
Equal list.Columns.Count, 1, "what is left"
Finished
