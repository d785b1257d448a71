// The view in front on paper or in a PDF, always dark on white.
#pragma once

class TFileFlow;
class TKorvexMainForm;

// Asks for a printer first; a cancelled dialog prints nothing.
void PrintView(TKorvexMainForm& form, TFileFlow& flow);
// Asks for a file first. Throws when it cannot be written.
void SaveViewAsPdf(TKorvexMainForm& form, TFileFlow& flow);
