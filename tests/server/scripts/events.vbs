' Events, with sinks that cancel, fail, leave and change the list.
Option Explicit
Dim list, first, second, heard, doomed
Sub a_NodeAdded(oNode)
  heard = heard & "a+" & oNode.Key & " "
End Sub
Sub b_NodeAdded(oNode)
  heard = heard & "b+" & oNode.Key & " "
End Sub
Sub a_RemovingNode(oNode, bCancel)
  heard = heard & "a?" & oNode.Key & " "
  If oNode.Key = "kept" Then bCancel = True
End Sub
Sub a_NodeRemoved(sKey)
  heard = heard & "a-" & sKey & " "
End Sub
Sub leaving_NodeAdded(oNode)
  heard = heard & "last "
  Unwatch second
End Sub
Sub removing_NodeAdded(oNode)
  list.Remove oNode.Key
End Sub

Set list = CreateObject("zelUtilities.zelNodeList")
first = Watch(list, "a")
second = Watch(list, "b")
list.Create "", "kept", ""
list.Create "", "gone", ""
Equal heard, "a+kept b+kept a+gone b+gone ", "two sinks hear in the order of their coming"

heard = ""
list.Remove "kept"
list.Remove "gone"
Equal list.Count, 1, "a sink keeps a node by bCancel"
Equal heard, "a?kept a?gone a-gone ", "the rest is told"

heard = ""
Unwatch second
second = Watch(list, "leaving")
list.Create "", "n1", ""
list.Create "", "n2", ""
Equal heard, "a+n1 last a+n2 ", "a sink may leave inside an event"

heard = ""
second = Watch(list, "removing")
list.Create "", "short", ""
Equal list.Item("short") Is Nothing, True, "a sink may remove the very node"
Equal heard, "a+short a?short a-short ", "and the others hear of it"
Unwatch second
Unwatch first
heard = ""
list.Create "", "unheard", ""
Equal heard, "", "nobody is left"
Finished
