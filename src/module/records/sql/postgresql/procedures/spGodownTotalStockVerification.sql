-- Brings the godown's good stock into line with a total count: each stock row of an item and
-- shipment that the entry counted holds the count, every other row of the godown holds zero.
-- Bad stock is not touched. Each change is written to loiTotalVerificationChange before it is
-- made, so that spReverseGodownTotalStockVerification undoes exactly this procedure's work.
CREATE FUNCTION spGodownTotalStockVerification(svhid integer, godownid integer)
RETURNS integer
LANGUAGE plpgsql AS $$
BEGIN
    -- Counted shipments that the godown holds no row for get one, at the line's location.
    WITH created AS (
        INSERT INTO moigodownstock (gsGodownId, gsItemId, gsShipmentId, gsLocationId, gsStock,
                                    gsBadStock, gsItemCost)
        SELECT godownid, d.svdItemID, d.svdShipmentID, min(d.svdLocationid),
               round(sum(coalesce(d.svdVerifiedStock, 0)), 3), 0, max(d.svdcostprice)
        FROM loiStockVerificationDetail d
        WHERE d.svdid = svhid AND d.svdGodownID = godownid
          AND d.svdItemID IS NOT NULL AND d.svdShipmentID IS NOT NULL
          AND NOT EXISTS (SELECT 1 FROM moigodownstock gs
                          WHERE gs.gsGodownId = godownid AND gs.gsItemId = d.svdItemID
                            AND gs.gsShipmentId = d.svdShipmentID)
        GROUP BY d.svdItemID, d.svdShipmentID
        ON CONFLICT DO NOTHING
        RETURNING gsItemId, gsShipmentId, gsStock)
    INSERT INTO loiTotalVerificationChange (tvcGodownId, tvcSvhId, tvcItemId, tvcShipmentId,
                                            tvcCreated, tvcOldStock, tvcNewStock)
    SELECT godownid, svhid, c.gsItemId, c.gsShipmentId, 1, 0, c.gsStock FROM created c;

    -- Every other row of the godown: what it held, and what the count makes of it. A row
    -- created just now already holds its count and is not recorded twice.
    INSERT INTO loiTotalVerificationChange (tvcGodownId, tvcSvhId, tvcItemId, tvcShipmentId,
                                            tvcCreated, tvcOldStock, tvcNewStock)
    SELECT godownid, svhid, s.gsItemId, s.gsShipmentId, 0, s.gsStock, s.counted
    FROM (SELECT gs.gsItemId, gs.gsShipmentId, gs.gsStock,
                 coalesce(c.counted, 0) AS counted
          FROM moigodownstock gs
          LEFT JOIN (SELECT d.svdItemID AS item, d.svdShipmentID AS shipment,
                            round(sum(coalesce(d.svdVerifiedStock, 0)), 3) AS counted
                     FROM loiStockVerificationDetail d
                     WHERE d.svdid = svhid AND d.svdGodownID = godownid
                     GROUP BY d.svdItemID, d.svdShipmentID) c
                 ON c.item = gs.gsItemId AND c.shipment = gs.gsShipmentId
          WHERE gs.gsGodownId = godownid) s
    WHERE s.gsStock <> s.counted;

    UPDATE moigodownstock
    SET gsStock = c.tvcNewStock
    FROM loiTotalVerificationChange c
    WHERE c.tvcGodownId = godownid AND c.tvcSvhId = svhid AND c.tvcCreated = 0
      AND gsGodownId = godownid AND gsItemId = c.tvcItemId AND gsShipmentId = c.tvcShipmentId;
    RETURN 0;
END
$$;
