#include "pattern/dendrogram.h"

#include <algorithm>
#include <fmt/format.h>
#include <functional>
#include <map>

namespace tarvika {

std::string SvgDendrogram(const std::vector<Fusion>& fusions, const std::vector<int>& codeOfPattern, int shown) {
  if (fusions.empty()) return {};
  const std::size_t first = fusions.size() > static_cast<std::size_t>(shown) ? fusions.size() - shown : 0;
  // Nodes: leaves for the clusters as they stood before the shown fusions, then one node
  // per fusion.
  struct Node {
    int left = -1, right = -1;
    double height = 0, x = 0;
    std::string label;
  };
  std::vector<Node> nodes;
  std::map<int, int> current;  // cluster -> its node
  auto nodeOf = [&](int cluster, int size) {
    auto it = current.find(cluster);
    if (it != current.end()) return it->second;
    nodes.push_back({-1, -1, 0, 0, fmt::format("{} ({})", codeOfPattern[cluster], size)});
    return current[cluster] = static_cast<int>(nodes.size()) - 1;
  };
  double top = 0;
  for (std::size_t i = first; i < fusions.size(); ++i) {
    const Fusion& f = fusions[i];
    const int a = nodeOf(f.kept, f.keptSize), b = nodeOf(f.absorbed, f.absorbedSize);
    const double h = std::max(0.0, f.height);
    top = std::max(top, h);
    nodes.push_back({a, b, h, 0, ""});
    current.erase(f.absorbed);
    current[f.kept] = static_cast<int>(nodes.size()) - 1;
  }
  // Leaves left to right in the order of the roots' clusters, the kept side first.
  std::vector<int> leaves;
  std::function<void(int)> place = [&](int n) {
    if (nodes[n].left < 0) {
      nodes[n].x = static_cast<double>(leaves.size());
      leaves.push_back(n);
      return;
    }
    place(nodes[n].left);
    place(nodes[n].right);
    nodes[n].x = 0.5 * (nodes[nodes[n].left].x + nodes[nodes[n].right].x);
  };
  for (const auto& [cluster, n] : current) place(n);

  const int step = 16, left = 50, plotTop = 20, height = 200, base = plotTop + height;
  const int width = left + static_cast<int>(leaves.size()) * step + 10;
  auto X = [&](const Node& n) { return left + step / 2 + n.x * step; };
  auto Y = [&](const Node& n) { return top > 0 ? base - height * n.height / top : static_cast<double>(base); };
  std::string svg = fmt::format("<P><svg xmlns=\"http://www.w3.org/2000/svg\" width=\"{}\" height=\"{}\" font-size=\"10\">",
                                width, base + 60);
  svg += "\r\n";
  svg += fmt::format("<line x1=\"{}\" y1=\"{}\" x2=\"{}\" y2=\"{}\" stroke=\"black\"/>", left - 2, plotTop, left - 2, base);
  svg += fmt::format("<text x=\"{}\" y=\"{}\" text-anchor=\"end\">{:.3f}</text>", left - 6, plotTop + 4, top);
  svg += fmt::format("<text x=\"{}\" y=\"{}\" text-anchor=\"end\">0</text>", left - 6, base + 4);
  svg += "\r\n";
  for (const Node& n : nodes) {
    if (n.left < 0) {
      const double x = X(n);
      svg += fmt::format("<text x=\"{:.1f}\" y=\"{}\" text-anchor=\"end\" transform=\"rotate(-60 {:.1f} {})\">{}</text>", x,
                         base + 12, x, base + 12, n.label);
      svg += "\r\n";
      continue;
    }
    const Node& a = nodes[n.left];
    const Node& b = nodes[n.right];
    const double y = Y(n);
    svg += fmt::format("<path d=\"M{:.1f} {:.1f}V{:.1f}H{:.1f}V{:.1f}\" fill=\"none\" stroke=\"#335599\"/>", X(a), Y(a), y,
                       X(b), Y(b));
    svg += "\r\n";
  }
  svg += "</svg></P>";
  return svg;
}

}  // namespace tarvika
