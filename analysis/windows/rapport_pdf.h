/// The report as PDF: the same blocks as the HTML, laid out on A4 pages, drawings as vectors.
#pragma once

#include <QByteArray>
#include <QImage>

struct rapport;

/// The whole file. May run outside of the window's thread.
QByteArray rapport_pdf(const rapport& r);
/// One of its pages, from 0, as a picture at 96 dots an inch.
QImage rapport_page(const rapport& r, int page);
