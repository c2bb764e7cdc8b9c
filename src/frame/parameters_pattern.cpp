// The parameters of the pattern dialog (TVorelDesForm), page by page: kinds, defaults, bounds
// and captions. A parameter that several pages show alike (the distance, the standardize
// switch) is one entry here. Which commands read which of them is said by the command table.

#include "frame/dialog_parameters.h"

namespace tarvika {

const std::vector<ParameterDefinition>& PatternParameters() {
  using K = ParameterKind;
  static const std::vector<ParameterDefinition> definitions = {
      // Shared by the pages that compare patterns.
      {"weight", K::Number, "1", 0, 0, {}, "Variable weights", "Változók súlya", true},
      {"distance", K::Choice, "ASED", 0, 0, {"ASED", "Pearson"}, "Distance type (Average Squared Euclidian or Pearson correlation)",
       "Távolságtípus (átlagos négyzetes eltérés vagy Pearson-korreláció)"},
      {"standardize", K::Toggle, kYes, 0, 0, {}, "Standardize variables", "Változók standardizálása"},
      // Describe.
      {"correlationMatrix", K::Flag, "off", 0, 0, {}, "Compute correlation matrix", "Korrelációs mátrix számítása"},
      {"saveWeightedSum", K::Flag, "off", 0, 0, {}, "Save weighted sum of selected variables",
       "A kijelölt változók súlyozott összegének mentése"},
      {"weightedSumName", K::Text, "Wsum", 0, 0, {}, "Name of the weighted sum", "A súlyozott összeg neve"},
      {"compareGroupCorrelations", K::Flag, "off", 0, 0, {}, "Feltételes csoportok korrelációinak összehasonlítása",
       "Feltételes csoportok korrelációinak összehasonlítása"},
      // Impute.
      {"imputationMethod", K::Choice, "Mean", 0, 0, {"Mean", "Twin", "Multiple regression"}, "Method of imputation",
       "Az imputálás módszere"},
      {"minimumPercentVariable", K::Integer, "80", 50, 100, {}, "Minimal % of usable data per variable",
       "A változónként használható adatok minimális %-a"},
      {"minimumPercentCase", K::Integer, "75", 50, 100, {}, "Minimal % of usable data for the selected variables per case",
       "Az esetenként használható adatok minimális %-a"},
      {"threshold", K::Number, "0.7", 0, 0, {}, "Threshold", "Küszöbérték"},
      {"saveImputed", K::Flag, "off", 0, 0, {}, "Save data after imputation in a new file",
       "Az imputált adatok mentése új fájlba"},
      {"imputedFile", K::Text, "imputed.msw", 0, 0, {}, "File name:", "Fájlnév:"},
      // Residue.
      {"twins", K::Integer, "1", 1, 5, {}, "Number of twins required", "A megkívánt ikrek száma"},
      {"saveResidual", K::Flag, "off", 0, 0, {}, "Save residual indicator as new variable",
       "A reziduum-jelző mentése új változóként"},
      {"densityVariables", K::Flag, "off", 0, 0, {}, "Sűrűsödési változók létrehozása és elmentése",
       "Sűrűsödési változók létrehozása és elmentése"},
      {"tenBandZones", K::Flag, "off", 0, 0, {}, "Input változók 10-es övezeteinek létrehozása",
       "Input változók 10-es övezeteinek létrehozása"},
      // Hierarchical clustering (the iterations and the tolerance also of the K-means page,
      // which takes tolerances up to 0.1).
      {"method", K::Choice, "Ward", 0, 0, {"Average", "Single", "Complete", "Centroid", "Median", "Ward", "Beta-flexible"},
       "Method", "Módszer"},
      {"beta", K::Number, "-0.2", 0, 0, {}, "Beta value (-1 to 1)", "Béta-érték (-1 és 1 között)"},
      {"reportFrom", K::Integer, "1", 0, 1000000, {}, "Report results for clusters of size from",
       "Eredmények kiírása ennyi klasztertől"},
      {"reportTo", K::Integer, "2", 0, 1000000, {}, "Report results for clusters of size to",
       "Eredmények kiírása ennyi klaszterig"},
      {"saveCluster", K::Flag, "off", 0, 0, {}, "Save final cluster variable", "A végső klaszterváltozó mentése"},
      {"clusterName", K::Text, "Clus", 0, 0, {}, "Name of the cluster variable", "A klaszterváltozó neve"},
      {"relocation", K::Flag, "off", 0, 0, {}, "Perform relocation after hierarchical clustering",
       "Relokáció a hierarchikus klaszterelemzés után"},
      {"maxIterations", K::Integer, "25", 0, 200, {}, "Maximal number of iterations", "Az iterációk maximális száma"},
      {"tolerance", K::Number, "0.0001", 0, 0, {}, "Tolerance ( 0,0001 - 0,01 )", "Tolerancia ( 0,0001 - 0,01 )"},
      // K-means relocation.
      {"clusters", K::Integer, "3", 1, 100, {}, "Number of clusters", "A klaszterek száma"},
      {"saveKMeans", K::Flag, "off", 0, 0, {}, "Save final clustering variable", "A végső klaszterváltozó mentése"},
      {"kmeansName", K::Text, "KClus", 0, 0, {}, "Name of the clustering variable", "A klaszterváltozó neve"},
      {"savingThreshold", K::Number, "0.7", 0, 0, {}, "Saving threshold:", "Mentési küszöb:"},
      // DensePoint.
      {"neighborThreshold", K::Number, "0.25", 0, 0, {}, "Threshold of being a neighbor", "A szomszédság küszöbe"},
      {"maxDensePoints", K::Integer, "15", 1, 200999, {}, "Maximal number of dense points",
       "A sűrűsödési pontok maximális száma"},
      {"identicalThreshold", K::Number, "0.05", 0, 0, {}, "Threshold of being identical dense point",
       "Az azonos sűrűsödési pont küszöbe"},
      {"saveDensePoint", K::Flag, "off", 0, 0, {}, "Save dense point indicator variable",
       "A sűrűsödési pont jelzőváltozó mentése"},
      {"referenceGroup", K::Integer, "0", 0, 100, {}, "Reference conditional group index",
       "A viszonyítási feltételes csoport indexe"},
      // Configural frequency analysis.
      {"saveConfiguration", K::Flag, "off", 0, 0, {}, "Save configuration code variable",
       "Konfiguráció indikátorváltozó elmentése"},
      // Centroid comparison.
      {"dissimilarityLimit", K::Number, "0.5", 0, 0, {}, "Lower limit of dissimilarity", "Az eltérés alsó határa"},
      {"similarityLimit", K::Number, "0.05", 0, 0, {}, "Upper limit of similarity", "A hasonlóság felső határa"},
      // Time separation and fusion.
      {"timePoints", K::Integer, "2", 1, 12, {}, "Number of time points", "Az időpontok száma"},
      {"variablesPerTimePoint", K::Integer, "1", 1, 50, {}, "Number of variables at each time point",
       "A változók száma időpontonként"},
      {"fusionTimePoints", K::Integer, "2", 0, 12, {}, "Number of time points", "Az időpontok száma"},
      {"timePointsSeparated", K::Flag, "off", 0, 0, {}, "Time points separated", "Az időpontok külön"},
      // Validation.
      {"validationIterations", K::Integer, "25", 0, 200, {}, "Maximal number of iterations", "Az iterációk maximális száma"},
      {"simulation", K::Toggle, kNo, 0, 0, {}, "Reliability check of cluster results via simulation",
       "A klaszterek megbízhatóságának vizsgálata szimulációval"},
      {"repetitions", K::Integer, "10", 1, 100, {}, "Number of independent repetitions:", "A független ismétlések száma:"},
  };
  return definitions;
}

}  // namespace tarvika
