# The made-up cores of the comparison: Rscript make_cores.R CORES.csv
set.seed(1983)
years <- 1683:1871
common <- as.vector(arima.sim(list(ar = 0.3), length(years), sd = 0.25))
spans <- list(REC01 = c(1683, 1871), REC02 = c(1683, 1850), REC03 = c(1701, 1871), REC04 = c(1690, 1820),
              REC05 = c(1766, 1871), REC06 = c(1700, 1790), REC07 = c(1801, 1845))
rings <- do.call(rbind, lapply(names(spans), function(name) {
  here <- years >= spans[[name]][1] & years <= spans[[name]][2]
  n <- sum(here)
  own <- as.vector(arima.sim(list(ar = c(0.5, 0.2)), n, sd = 0.15))
  width <- round((1.6 * exp(-(1:n) / 90) + 0.4) * exp(common[here] + own), 2)
  # One core is of another site.
  if (name == "REC04") width <- round((1.2 + 0.2 * sin(1:n / 9)) * exp(0.15 * common[here] + 2 * own), 2)
  data.frame(core = name, year = years[here], width = width)
}))
# The narrowest rings of two cores are absent.
for (name in c("REC02", "REC04")) {
  of <- which(rings$core == name)
  rings$width[of[rank(rings$width[of], ties.method = "first") <= 3]] <- 0
}
write.csv(rings, commandArgs(trailingOnly = TRUE)[1], row.names = FALSE, quote = FALSE)
