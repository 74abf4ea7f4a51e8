// Loads a settings file into a node list, prints its sections and entries, changes a value and saves a copy.
//   csc settings.cs && settings settings.ini copy.ini
// The library must be registered: regsvr32 zelUtilities.dll, or for yourself: regsvr32 /n /i:user zelUtilities.dll
// Calls are late-bound here. With a reference to zelUtilities.tlb they are checked when compiled, and the list's
// events (list.NodeAdded += ...) can be followed.
using System;

static class Settings
{
    [STAThread]
    static int Main(string[] arguments)
    {
        dynamic list = Activator.CreateInstance(Type.GetTypeFromProgID("zelUtilities.zelNodeList", true));
        if (!list.LoadFromINI(arguments[0]))
        {
            Console.Error.WriteLine("cannot be read: " + arguments[0]);
            return 1;
        }

        foreach (dynamic section in list.RootNodes)
        {
            Console.WriteLine((string)section.Text);
            foreach (dynamic entry in section.Nodes)
                Console.WriteLine("  {0} = {1}", (object)entry.Cells["Value"].Value, (object)entry.Cells["Data"].Value);
        }

        list.UpdateINIValue("Window", "Width", "1280");
        if (!list.SaveAsINI(arguments[1])) return 1;
        Console.WriteLine("saved");
        return 0;
    }
}
