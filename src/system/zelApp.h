// zelApp: keeps where and how a form was shown, from one run of a program to the next.
//
//   zel_SaveFormState(u"Orders", form);                       // as it closes
//   zel_RestoreFormState(u"Orders", form);                    // as it loads
//
// A form is any object with the properties Left, Top, Width, Height and, where it has one, WindowState (0
// normal, 1 minimised, 2 maximised). They are kept, with the place of a splitter, in the per-user settings of
// the application under the form's name: values of these names, and "Splitter", below HKEY_CURRENT_USER
// "Software\VB and VBA Program Settings\<application>\<form>", texts of whole numbers in the form's own
// units.
//
// A failure is logged, never raised.
#pragma once

#include "automation/ClassInfo.h"
#include "automation/Object.h"
#include "automation/String.h"

namespace zelUtilities {

// Keeps the form's state; under its Name unless another one is given. A splitter is a bar between two parts
// of the form: its Left is kept where it is taller than wide, else its Top. Of a form that is not normal only
// the window state is kept (and, maximised, the splitter), beside the bounds that were kept before. True on
// success.
bool zel_SaveFormState(const String& sAppName, const Ref<Object>& oForm, const Ref<Object>& oSplitter = {},
                       const String& sFormName = {});

// Gives the form what was kept; what was not kept stays as it is. True when there was something and every
// step worked. A value that is no such number is logged and counts as not kept. A form that was minimised
// comes back as normal. A form whose title would not be within reach on the present screens is moved into the
// one that shows most of it, else the main one; for this its units are taken as twips unless the number of
// units that make one pixel is given (0.75 for points at 96 dots an inch, 1 for pixels).
bool zel_RestoreFormState(const String& sAppName, const Ref<Object>& oForm, const Ref<Object>& oSplitter = {},
                          const String& sFormName = {}, double dUnitsPerPixel = 0);

namespace zelApp {
const ClassInfo& describeClass();
}

}  // namespace zelUtilities
