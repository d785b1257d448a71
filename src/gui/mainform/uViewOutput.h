// What leaves the window: the view in front on paper or in a PDF, always dark on white, and pictures as bytes.
#pragma once

#include <QImage>
#include <string>

#include "shell/uMainScreen.h"

class TFileFlow;
class TKorvexMainForm;

// Asks for a printer first; a cancelled dialog prints nothing.
void PrintView(TKorvexMainForm& form, TFileFlow& flow);
// Asks for a file first, and says where it is or why it could not be written.
void SaveViewAsPdf(TKorvexMainForm& form, TFileFlow& flow, IMainScreen& screen);
// The bytes of a picture file. Throws std::runtime_error.
std::string Encoded(const QImage& picture, TPictureFormat format);
