#pragma once

class HtmlPageView;

/// A module beside the plug-in that is loaded with the first page, and stays: it brings Qt's WebKit along.
namespace PagesModule {

/// @return  as `newHtmlPageView`
using NewPage = HtmlPageView* (*)();

inline constexpr const char* newPageName = "hollerwickNewPage";

} // namespace PagesModule
