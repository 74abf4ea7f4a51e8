// Calls of every kind, as a JScript client writes them.
var list = new ActiveXObject("zelUtilities.zelNodeList");
list.CreateColumn("A");
var node = list.Create("", "k1", "One");
list.Create("k1", "k2", "Two");
Equal(list.Count, 2, "Count");
Equal(list.Item("k2").Parent === node, true, "identity");
Equal(list.Item("none") === null, true, "nothing is null");
node.Tag = null;
Equal(node.Tag === null, true, "null");
node.Tag = undefined;
Equal(node.Tag === undefined, true, "undefined");
node.Tag = { name: "mine" };
Equal(node.Tag.name, "mine", "an object of the client's comes back as itself");
node.Cells("A").Value = 7;
Equal(node.Cells("A").Value, 7, "a cell");
Equal(typeof list.Clear, "unknown", "reading a method does not call it");
Equal(list.Count, 2, "and nothing was removed");

var keys = "";
for (var walk = new Enumerator(list); !walk.atEnd(); walk.moveNext()) keys += walk.item().Key + " ";
Equal(keys, "k1 k2 ", "enumeration");

var message = "";
try {
  list.Create("x");
} catch (error) {
  message = (error.number & 0xFFFF) + " " + error.description;
}
Equal(message, "449 Argument not optional", "an error");
Finished();
