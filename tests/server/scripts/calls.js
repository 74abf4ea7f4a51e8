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
var cell = node.Cells("A");
cell.Value = new Date(2024, 1, 29, 18, 30, 1);
Equal(cell.FormattedValue, "45351.77", "a date object is a date");
cell.Value = new Date(1899, 11, 29, 6, 0, 0);
Equal(cell.FormattedValue, "-1.25", "before the first day too");
cell.Value = 7;
Equal(cell.Value, 7, "a cell");
node.Tag = [1, 2];
Equal(node.Tag.length, 2, "an array object stays one where any value will do");
var objects = new ActiveXObject("zelUtilities.zelObjects");
var mine = { item: function (key) { return key == "k" ? mine : 1; } };
Equal(objects.zel_IsInCollection(mine, "k"), true, "an object of the script is called");
Equal(objects.zel_IsInCollection(mine, "l"), false, "with the argument given");
var controls = new ActiveXObject("zelUtilities.zelControls");
var box = { Name: "box", Enabled: true };
controls.zel_SetControlStatus(box, false);
Equal(box.Enabled, false, "a control of the script's is written to");
var frame = { Name: "frame" };
box.Container = frame;
Equal(controls.zel_InContainer(box, frame), true, "and read");
var files = new ActiveXObject("zelUtilities.zelFiles");
var bytes = [65, 66];
bytes[3] = 67;
files.zel_PutFileContents(bytes, "bytes.txt");
Equal(files.zel_GetFileContentsAsString("bytes.txt"), "AB\u0000C", "and becomes an array where one is wanted");
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
