/// The report as PDF: the same blocks as the HTML, laid out on A4 pages, drawings as vectors.
#pragma once

#include <QByteArray>

struct rapport;

/// The whole file. May run outside of the window's thread.
QByteArray rapport_pdf(const rapport& r);
