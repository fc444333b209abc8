#pragma once
// The renderer as the editor's layout service: each relayout walks the page, hands the
// editor its position table and facts, and keeps the result for whoever draws it.

#include "edit/services.h"
#include "render/page_layout.h"

namespace tahrir::app {

// What the editor learns from a laid-out page of `sheet`.
edit::LayoutFacts FactsOf(const core::ScoreSheet& sheet, const render::LayoutResult& result,
                          const render::LayoutOptions& options);

class RenderLayout : public edit::LayoutService {
public:
    RenderLayout() = default;
    explicit RenderLayout(const render::LayoutOptions& options) : m_options(options) {}

    edit::LayoutFacts relayout(const core::ScoreSheet& sheet,
                               core::PositionTable& positions) override;

    render::LayoutOptions& options() { return m_options; }
    const render::LayoutOptions& options() const { return m_options; }
    // The last relayout of the sheet.
    const render::LayoutResult& result() const { return m_result; }

protected:
    render::LayoutOptions m_options;
    render::LayoutResult m_result;
};

} // namespace tahrir::app
