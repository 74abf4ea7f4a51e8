' Creates, passes and drops objects: fifty thousand in all, none of which may stay.
Dim list, node, other, item, i
For i = 1 To 5000
  Set list = NewObject("zelUtilities.zelNodeList")
  list.CreateColumn "A"
  Set node = list.Create("", "k", "One")
  Set other = list.Create("k", "l", "Two")
  Set node.Tag = NewObject("zelUtilities.zelStringCat")
  Set other.Tag = node.Cells("A")
  For Each item In list
    Set item.DefaultCell.Tag = node.Tag
  Next
  list.Remove "l"
Next
Equal list.Count, 1, "the last list"
Set list = Nothing
Set node = Nothing
Set other = Nothing
Set item = Nothing
Finished
