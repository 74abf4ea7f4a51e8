// Controls of a script's own are translated, whatever they have and lack.
function collection() {
  var items = arguments;
  return { Count: items.length, Item: function (i) { return items[i - 1]; } };
}
var label = { Name: "lblAge", Caption: "Name & <Age>:", ToolTipText: "tip", Text: "typed" };
var bare = { Name: "txtAge" };
var page = { Key: "p1", Caption: "Page", ToolTipText: "tip" };
var silent = { Key: "p2", Caption: "Other", ToolTipText: "" };
var header = { Key: "h", Caption: "head", Text: "Column" };
var form = collection(label, { Caption: "nameless" }, bare,
                      Typed({ Name: "tabs", Tabs: collection({}, page, silent) }, "_TabStrip"),
                      Typed({ Name: "rows", ColumnHeaders: collection(header) }, "ListView"),
                      { Name: "untyped", Tabs: collection(header) });
function texts() {
  return [label.Caption, label.ToolTipText, label.Text, page.Caption, page.ToolTipText, silent.Caption,
          silent.ToolTipText, header.Caption, header.Text].join("|");
}
var before = texts();
var table = new ActiveXObject("zelUtilities.zelGlobalization");
table.AddLanguage("en", "English");
table.AddLanguage("de", "German");
table.CreateIfMissing = true;
table.TranslateControls("Main", form);
Equal(texts(), before, "a table learns the texts that stand there");
table.SelectLanguage("de");
table.TranslateControls("Main", form);
Equal(texts(), "Missing|Missing|typed|Missing|Missing|Missing||head|Missing",
      "and puts a language's in their place");
Equal(bare.Caption === undefined, true, "what a control lacks it does not get");
table.SelectLanguage("none");
table.TranslateControls("Main", form);
Equal(texts(), before, "back");

Equal(table.Save("texts.xml"), true, "saving");
var loaded = new ActiveXObject("zelUtilities.zelGlobalization");
Equal(loaded.Load("texts.xml"), true, "loading");
Equal(loaded.ExportXML() === table.ExportXML(), true, "the same table");
loaded.SelectLanguage("DE");
Equal(loaded.Translate("Main", "tabs", "p1") + loaded.SelectedLanguage.Name, "MissingGerman", "in another form");
Equal(loaded.Translate("Main", "none", "", "Caption", "default"), "default", "a default");
Finished();
