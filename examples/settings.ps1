# Loads a settings file into a node list, prints its sections and entries, changes a value and saves a copy.
#   powershell -File settings.ps1 settings.ini copy.ini
# The library must be registered: regsvr32 zelUtilities.dll, or for yourself: regsvr32 /n /i:user zelUtilities.dll
param([Parameter(Mandatory)][string] $File, [Parameter(Mandatory)][string] $Copy)

# The library's current folder is that of the process, not that of the shell.
$path = $ExecutionContext.SessionState.Path
$list = New-Object -ComObject zelUtilities.zelNodeList
if (-not $list.LoadFromINI($path.GetUnresolvedProviderPathFromPSPath($File))) { throw "cannot be read: $File" }

foreach ($section in $list.RootNodes) {
    $section.Text
    foreach ($entry in $section.Nodes) {
        "  $($entry.Cells.Item('Value').Value) = $($entry.Cells.Item('Data').Value)"
    }
}

[void] $list.UpdateINIValue('Window', 'Width', '1280')
if (-not $list.SaveAsINI($path.GetUnresolvedProviderPathFromPSPath($Copy))) { exit 1 }
'saved'
