-- params: @svhid int,@godownid int
-- Brings the godown's good stock into line with a total count: each stock row of an item and
-- shipment that the entry counted holds the count, every other row of the godown holds zero.
-- Bad stock is not touched. Each change is written to loiTotalVerificationChange before it is
-- made, so that spReverseGodownTotalStockVerification undoes exactly this procedure's work.

-- Counted shipments that the godown holds no row for get one, at the line's location.
INSERT INTO loiTotalVerificationChange (tvcGodownId, tvcSvhId, tvcItemId, tvcShipmentId,
                                        tvcCreated, tvcOldStock, tvcNewStock)
SELECT @godownid, @svhid, d.svdItemID, d.svdShipmentID, 1, 0,
       round(sum(ifnull(d.svdVerifiedStock, 0)), 3)
FROM loiStockVerificationDetail d
WHERE d.svdid = @svhid AND d.svdGodownID = @godownid
  AND d.svdItemID IS NOT NULL AND d.svdShipmentID IS NOT NULL
  AND NOT EXISTS (SELECT 1 FROM moigodownstock gs
                  WHERE gs.gsGodownId = @godownid AND gs.gsItemId = d.svdItemID
                    AND gs.gsShipmentId = d.svdShipmentID)
GROUP BY d.svdItemID, d.svdShipmentID;

INSERT INTO moigodownstock (gsGodownId, gsItemId, gsShipmentId, gsLocationId, gsStock,
                            gsBadStock, gsItemCost)
SELECT @godownid, d.svdItemID, d.svdShipmentID, min(d.svdLocationid),
       round(sum(ifnull(d.svdVerifiedStock, 0)), 3), 0, max(d.svdcostprice)
FROM loiStockVerificationDetail d
WHERE d.svdid = @svhid AND d.svdGodownID = @godownid
  AND d.svdItemID IS NOT NULL AND d.svdShipmentID IS NOT NULL
  AND NOT EXISTS (SELECT 1 FROM moigodownstock gs
                  WHERE gs.gsGodownId = @godownid AND gs.gsItemId = d.svdItemID
                    AND gs.gsShipmentId = d.svdShipmentID)
GROUP BY d.svdItemID, d.svdShipmentID;

INSERT INTO loiTotalVerificationChange (tvcGodownId, tvcSvhId, tvcItemId, tvcShipmentId,
                                        tvcCreated, tvcOldStock, tvcNewStock)
SELECT @godownid, @svhid, s.gsItemId, s.gsShipmentId, 0, s.gsStock, s.counted
FROM (SELECT gs.gsItemId, gs.gsShipmentId, gs.gsStock,
             ifnull((SELECT round(sum(ifnull(d.svdVerifiedStock, 0)), 3)
                     FROM loiStockVerificationDetail d
                     WHERE d.svdid = @svhid AND d.svdGodownID = @godownid
                       AND d.svdItemID = gs.gsItemId AND d.svdShipmentID = gs.gsShipmentId),
                    0) AS counted
      FROM moigodownstock gs
      WHERE gs.gsGodownId = @godownid) s
WHERE s.gsStock <> s.counted;

UPDATE moigodownstock
SET gsStock = ifnull((SELECT round(sum(ifnull(d.svdVerifiedStock, 0)), 3)
                      FROM loiStockVerificationDetail d
                      WHERE d.svdid = @svhid AND d.svdGodownID = @godownid
                        AND d.svdItemID = gsItemId AND d.svdShipmentID = gsShipmentId),
                     0)
WHERE gsGodownId = @godownid;
