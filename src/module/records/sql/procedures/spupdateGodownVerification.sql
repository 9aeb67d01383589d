-- params: @svhid int,@godownid int,@mode varchar(1)
-- Moves the godown's stock by what an entry counted: for each item and shipment of its lines,
-- good stock by counted minus book good stock, bad stock by counted minus book bad stock.
-- "F" applies the lines, "R" takes exactly that back, so that F then R leaves every stock row
-- as it was. Quantities are kept to 3 decimals.

INSERT INTO sv_guard (reason)
SELECT 'mode' WHERE upper(trim(ifnull(@mode, ''))) NOT IN ('F', 'R');

-- A line may name a shipment that the godown holds no row for: F creates the row at the
-- line's location and remembers it, so that R can remove it again.
INSERT OR IGNORE INTO loiVerificationNewStock (vnsGodownId, vnsSvhId, vnsItemId, vnsShipmentId)
SELECT DISTINCT @godownid, @svhid, d.svdItemID, d.svdShipmentID
FROM loiStockVerificationDetail d
WHERE upper(trim(@mode)) = 'F'
  AND d.svdid = @svhid AND d.svdGodownID = @godownid
  AND d.svdItemID IS NOT NULL AND d.svdShipmentID IS NOT NULL
  AND NOT EXISTS (SELECT 1 FROM moigodownstock gs
                  WHERE gs.gsGodownId = @godownid AND gs.gsItemId = d.svdItemID
                    AND gs.gsShipmentId = d.svdShipmentID);

INSERT INTO moigodownstock (gsGodownId, gsItemId, gsShipmentId, gsLocationId, gsStock,
                            gsBadStock, gsItemCost)
SELECT @godownid, d.svdItemID, d.svdShipmentID, min(d.svdLocationid), 0, 0, max(d.svdcostprice)
FROM loiStockVerificationDetail d
WHERE upper(trim(@mode)) = 'F'
  AND d.svdid = @svhid AND d.svdGodownID = @godownid
  AND d.svdItemID IS NOT NULL AND d.svdShipmentID IS NOT NULL
  AND NOT EXISTS (SELECT 1 FROM moigodownstock gs
                  WHERE gs.gsGodownId = @godownid AND gs.gsItemId = d.svdItemID
                    AND gs.gsShipmentId = d.svdShipmentID)
GROUP BY d.svdItemID, d.svdShipmentID;

UPDATE moigodownstock
SET gsStock = round(gsStock + m.sign * m.good, 3),
    gsBadStock = round(gsBadStock + m.sign * m.bad, 3)
FROM (SELECT d.svdItemID AS item,
             d.svdShipmentID AS shipment,
             (CASE upper(trim(@mode)) WHEN 'R' THEN -1 ELSE 1 END) AS sign,
             round(sum(ifnull(d.svdVerifiedStock, 0) - ifnull(d.svdAvailStock, 0)), 3) AS good,
             round(sum(ifnull(d.svdverifiedbadstock, 0) - ifnull(d.svdavailbadstock, 0)), 3)
                 AS bad
      FROM loiStockVerificationDetail d
      WHERE d.svdid = @svhid AND d.svdGodownID = @godownid
      GROUP BY d.svdItemID, d.svdShipmentID) m
WHERE gsGodownId = @godownid AND gsItemId = m.item AND gsShipmentId = m.shipment;

DELETE FROM moigodownstock
WHERE upper(trim(@mode)) = 'R'
  AND gsGodownId = @godownid AND gsStock = 0 AND gsBadStock = 0
  AND EXISTS (SELECT 1 FROM loiVerificationNewStock n
              WHERE n.vnsGodownId = @godownid AND n.vnsSvhId = @svhid
                AND n.vnsItemId = gsItemId AND n.vnsShipmentId = gsShipmentId);

DELETE FROM loiVerificationNewStock
WHERE upper(trim(@mode)) = 'R' AND vnsGodownId = @godownid AND vnsSvhId = @svhid;
