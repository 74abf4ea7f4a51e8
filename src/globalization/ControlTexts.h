// ControlTexts: the texts of a form's controls, whatever the controls are.
#pragma once

#include "globalization/zelGlobalization.h"

namespace zelUtilities {

// Translates each control of a collection that the table has in the section: its Caption, ToolTipText (where
// not empty) and prefix, and then the names of the columns of its NodeList, or, for a control without one, by
// the name of its class: Caption and ToolTipText of the Tabs of a "TabStrip" and "SSTab" and of the Buttons
// of a "Toolbar", Text of the ColumnHeaders of a "ListView", each under the item's Key as part. The text that
// stands there is the default. What a control or item lacks, or refuses, is passed over in silence.
void translateControls(zelGlobalization& table, StringView section, const Ref<Object>& controls);

}  // namespace zelUtilities
