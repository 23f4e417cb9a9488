#include "info/Frm_About.h"

#include "runtime/ui/MessageBox.h"

namespace pemlo {

namespace {

using P = ParaKind;

constexpr RichParagraph AboutText[] = {
    {P::Heading, "Disclaimer"},
    {P::Blank, ""},
    {P::Body, "The contents of this computer code reflect the views of the authors, who are "
              "responsible for the fact and the accuracy of the data presented herein. "
              "The contents do not necessarily reflect the official views or policies of the "
              "authors' institution. "
              "This classification/computer code does not constitute a standard, specification, or regulation."},
    {P::Blank, ""},
    {P::Body, "The results of the program are an aid to engineering judgement. They do not replace "
              "borings, sampling and laboratory tests, nor the judgement of the engineer who signs "
              "for the design."},
    {P::Blank, ""},
    {P::Heading, "References"},
    {P::Blank, ""},
    {P::Numbered, "1.\tPemlo & Korvu (1999). Soil classification from cone penetration tests: "
                  "a closed-form probabilistic method. Research report."},
    {P::Numbered, "2.\tPemlo (1998). Probabilities of sand, silt and clay from the cone tip "
                  "resistance and the friction ratio: statistics of a database of soundings beside "
                  "borings. Research report."},
    {P::Numbered, "3.\tKorvu & Pemlo (1997). The soil classification index U and the soil in-situ "
                  "state index V from cone penetration data. Conference paper."},
    {P::Numbered, "4.\tGuide to cone penetration testing: equipment, procedures and the reduction "
                  "of the readings. Technical guide."},
    {P::Numbered, "5.\tIn-situ testing in geotechnical engineering: the cone penetrometer and the "
                  "interpretation of its readings. Textbook."},
    {P::Blank, ""},
    {P::Heading, "Acknowledgements"},
    {P::Blank, ""},
    {P::Body, "The development of the method and of this program was supported by a research grant "
              "of a public highway agency and by the geotechnical laboratory of the authors' "
              "department."},
    {P::Blank, ""},
    {P::Body, "The authors thank the engineers of the agency's district offices, who supplied the "
              "cone soundings and the boring logs used to calibrate and test the method, and the "
              "graduate students who programmed, tested and documented the successive versions of "
              "the program."},
    {P::Blank, ""},
    {P::Body, "Comments on the program and reports of problems are welcome; please include the data "
              "file and the units chosen on the open-file screen."},
    {P::Blank, ""},
    {P::Body, "Version 3.0"},
    {P::Blank, ""},
};

}  // namespace

Frm_About::Frm_About(QWidget* parent)
    : InfoWindow(ScreenId::Frm_About, QStringLiteral("About ") + AppTitle(), AboutText, parent)
{
}

void RegisterFrm_About()
{
    Screens::Instance().Register(ScreenId::Frm_About, [] { return new Frm_About; });
}

}  // namespace pemlo
